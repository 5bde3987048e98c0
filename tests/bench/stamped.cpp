// Prints the time and becomes the command that it is given: the moment at which a start begins.
//
// usage: stamped COMMAND [ARGUMENT...]
#include <unistd.h>

#include <cstdio>
#include <ctime>

int main(int argc, char **argv) {
  if (argc < 2) {
    return 2;
  }
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  std::printf("%lld%09ld\n", static_cast<long long>(now.tv_sec), now.tv_nsec);
  std::fflush(stdout);
  execvp(argv[1], argv + 1);
  std::perror(argv[1]);
  return 127;
}
