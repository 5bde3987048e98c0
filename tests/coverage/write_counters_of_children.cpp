// Part of each unit test in a coverage build: the children that tests fork leave by ways that write
// no counters otherwise. That all of them leave from ordinary code, and not from the middle of an
// allocation, makes it safe to write them here.
#include <csignal>
#include <cstdlib>
#include <initializer_list>

extern "C" void __gcov_dump();  // libgcov's; its header is for C alone

namespace {

void OnSignal(int signal) {
  __gcov_dump();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

const bool watching = [] {
  for (const int signal : {SIGABRT, SIGTERM}) {
    std::signal(signal, OnSignal);
  }
  return std::at_quick_exit(__gcov_dump) == 0;
}();

}  // namespace
