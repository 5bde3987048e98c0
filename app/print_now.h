// Printing what start-up reports.
#pragma once

// Prints `text` on standard output so that a pipe has it at once, before anything that a child
// command writes there. What cannot be printed is lost; the program goes on when nobody reads it
// any more.
void PrintNow(const char *text);
