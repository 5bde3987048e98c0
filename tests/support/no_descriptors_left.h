// While one lives, the process can open nothing: no file, no pipe.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

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
