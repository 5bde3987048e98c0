// A stand-in for the registry's client: a shell script that is found first on the search path, and
// the record of the calls made to it.
#pragma once

#include <string>
#include <vector>

#include "tests/support/scoped_env.h"
#include "tests/support/temp_dir.h"

class FakeRegmux {
 public:
  // `script` is run for each call with the call's arguments; its status is the client's.
  explicit FakeRegmux(const std::string &script);

  // One text for each call, in order: the arguments, each in square brackets.
  std::vector<std::string> Calls() const;

  const TempDir &Directory() const { return directory_; }

 private:
  TempDir directory_;
  ScopedEnv path_;
};
