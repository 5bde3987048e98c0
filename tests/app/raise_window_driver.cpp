// Raises the windows of the processes that its arguments name, one after the other, and from the
// second on without DISPLAY, which works because the open connection is kept. Then writes "." past
// the output stream: what comes before it was printed in time. Fails when the X error handler is
// not the one it was before.
#include <X11/Xlib.h>
#include <unistd.h>

#include <cstdlib>

#include "app/raise_window.h"

namespace {

int OwnHandler(Display *, XErrorEvent *) {
  std::abort();
}

}  // namespace

int main(int argc, char **argv) {
  XSetErrorHandler(OwnHandler);
  for (int arg = 1; arg < argc; ++arg) {
    RaiseRunningInstance(static_cast<std::int32_t>(std::strtol(argv[arg], nullptr, 10)));
    unsetenv("DISPLAY");
  }
  const bool printed = write(STDOUT_FILENO, ".", 1) == 1;
  return printed && XSetErrorHandler(nullptr) == OwnHandler ? EXIT_SUCCESS : EXIT_FAILURE;
}
