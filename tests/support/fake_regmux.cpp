// Writes the stand-in for the registry's client, and reads its record.
#include "tests/support/fake_regmux.h"

#include <sstream>

FakeRegmux::FakeRegmux(const std::string &script)
    : path_("PATH", directory_.Path("bin") + ":/usr/bin:/bin") {
  directory_.MakeDirectory("bin");
  directory_.Write("bin/regmux",
                   "#!/bin/sh\n{ printf '[%s]' \"$@\"; printf '\\036'; } >> '" +
                       directory_.Path("calls") + "'\n" + script + "\n",
                   0755);
}

std::vector<std::string> FakeRegmux::Calls() const {
  std::vector<std::string> calls;
  std::istringstream text(directory_.Read("calls"));
  for (std::string call; std::getline(text, call, '\036');) {
    calls.push_back(call);
  }
  return calls;
}
