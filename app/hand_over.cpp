#include "app/hand_over.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "app/print_now.h"
#include "app/raise_window.h"
#include "app/single_instance.h"
#include "text/line_reader.h"

namespace {

constexpr std::size_t kLineLimit = 1023;  // bytes a read

// Through the shell, not by opening the file here: nothing but TakeInstanceLock ever does.
void RaiseInstanceOfPidFile() {
  std::FILE *output = popen("cat /var/run/korv-agent-mgr.pid", "r");
  if (output == nullptr) {
    return;
  }
  std::string line;
  ReadLine(output, kLineLimit, line);
  pclose(output);
  SetTargetPid(PidFromText(line));
  RaiseRunningInstance();
}

}  // namespace

bool HandOverToRunningInstance() {
  PrintNow("Pellion 5\n");
  if (!TakeInstanceLock()) {
    return false;
  }
  RaiseInstanceOfPidFile();
  return true;
}

std::int32_t PidFromText(const std::string &text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const long number = std::strtol(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long>(number, Limits::min(), Limits::max()));
}
