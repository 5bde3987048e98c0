// Prints without the output stream, in which a text that could not be printed might be left.
#include "app/print_now.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>

void PrintNow(const char *text) {
  // For as long as this takes, and no longer: commands inherit what is ignored, and those are to
  // end when nobody reads them.
  const auto handler = std::signal(SIGPIPE, SIG_IGN);
  dprintf(STDOUT_FILENO, "%s", text);
  std::signal(SIGPIPE, handler);
}
