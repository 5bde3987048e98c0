// Checks of arguments that only a programming error can get wrong.
#pragma once

#include <cstdio>
#include <cstdlib>

[[noreturn]] inline void StopAt(const char *function, const char *parameter) {
  std::fprintf(stderr, "%s: Assertion `%s' failed.\n", function, parameter);
  std::abort();
}

// Stops the program with a message that names the function and the parameter, unless the condition
// holds. Unlike assert(), it cannot be compiled out.
#define REQUIRE(holds, parameter) ((holds) ? void() : StopAt(__func__, (parameter)))
