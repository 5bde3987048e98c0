// Part of the program in a coverage build, and of no other: SIGTERM ends the program as usual, but
// what it has run is written first. Window tests end with the window open, and counters are
// otherwise written at a regular exit only.
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <thread>

#include "app/standard_descriptors.h"

extern "C" void __gcov_dump();  // libgcov's; its header is for C alone

namespace {

int wake_up[2];

// In a thread of its own: the signal may come while the main thread holds a lock, for example
// malloc's, which it must be able to release.
void WriteCountersAtTheEnd() {
  char byte = 0;
  if (read(wake_up[0], &byte, 1) == 1) {
    __gcov_dump();
    std::signal(SIGTERM, SIG_DFL);
    kill(getpid(), SIGTERM);
  }
}

void OnTerminate(int) {
  if (write(wake_up[1], "", 1) != 1) {
    _exit(EXIT_FAILURE);
  }
}

// Before main, and not on descriptors on which the program prints. The thread takes no signals:
// they are the program's.
const bool watching = [] {
  OpenStandardDescriptors();
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  if (pipe2(wake_up, O_CLOEXEC) != 0 || pthread_sigmask(SIG_SETMASK, &all, &before) != 0) {
    return false;
  }
  std::thread(WriteCountersAtTheEnd).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  std::signal(SIGTERM, OnTerminate);
  return true;
}();

}  // namespace
