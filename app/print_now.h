// What start-up prints for whoever watches it.
#pragma once

#include <cstdio>

// Prints `text` on standard output so that a pipe has it at once, before anything that a child
// command writes there.
inline void PrintNow(const char *text) {
  std::fputs(text, stdout);
  std::fflush(stdout);
}
