// What a start does on the platform that allows only one instance.
#pragma once

#include <cstdint>
#include <string>

// Says the platform's name on standard output and takes the instance lock. True when another
// instance holds it: that one's window has been raised, and this process has nothing left to do.
bool HandOverToRunningInstance();

// The process id at the start of the pid file's text, after any white space; 0 when there are no
// digits, and the nearest 32-bit number for one that does not fit.
std::int32_t PidFromText(const std::string &text);
