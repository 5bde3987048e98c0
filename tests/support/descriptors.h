// The process's open files, counted and denied.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>

inline int CountDescriptors() {
  int count = 0;
  for (int descriptor = 0; descriptor < 256; ++descriptor) {
    count += fcntl(descriptor, F_GETFD) != -1 ? 1 : 0;
  }
  return count;
}

// Those that a command inherits, as the command line below lists its own.
inline std::string InheritedDescriptors() {
  std::string inherited;
  for (int descriptor = 0; descriptor < 256; ++descriptor) {
    const int flags = fcntl(descriptor, F_GETFD);
    if (flags != -1 && (flags & FD_CLOEXEC) == 0) {
      inherited += std::to_string(descriptor) + " ";
    }
  }
  return inherited;
}

inline constexpr char kListDescriptors[] =
    "for f in $(seq 0 255); do [ -e /proc/$$/fd/$f ] && printf '%d ' $f; done";

// While one lives, the process can open nothing: no file, no pipe.
class NoDescriptorsLeft {
 public:
  NoDescriptorsLeft() {
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before_), 0);
    const int lowest_free = dup(STDERR_FILENO);
    close(lowest_free);
    Limit({static_cast<rlim_t>(lowest_free), before_.rlim_max});
  }
  ~NoDescriptorsLeft() { Limit(before_); }
  NoDescriptorsLeft(const NoDescriptorsLeft &) = delete;
  NoDescriptorsLeft &operator=(const NoDescriptorsLeft &) = delete;

 private:
  static void Limit(const rlimit &limit) { EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0); }

  rlimit before_ = {};
};
