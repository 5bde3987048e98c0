// An environment variable that is as it was before when the test ends.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class ScopedEnv {
 public:
  // Sets the variable, or removes it for nullopt.
  ScopedEnv(const char *name, const std::optional<std::string> &value) : name_(name) {
    if (const char *old = std::getenv(name)) {
      old_ = old;
    }
    Put(value);
  }
  ~ScopedEnv() { Put(old_); }
  ScopedEnv(const ScopedEnv &) = delete;
  ScopedEnv &operator=(const ScopedEnv &) = delete;

 private:
  void Put(const std::optional<std::string> &value) const {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

  const char *name_;
  std::optional<std::string> old_;
};
