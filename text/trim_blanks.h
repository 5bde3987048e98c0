// Trimming what the user typed before it is looked at.
#pragma once

#include <string>
#include <string_view>

// Removes blanks (the space character only: tabs and line ends stay) from both ends of a writable
// NUL-terminated text, in place. Null and empty texts are left alone; a text of only blanks becomes
// empty. Any encoding in which byte 32 is always a blank.
void TrimBlanks(char *text);

// The same, of a copy.
std::string TrimmedBlanks(std::string_view text);
