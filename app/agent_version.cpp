// Asks the agent for its version, and takes the version out of what it prints.
#include "app/agent_version.h"

#include <cstdio>
#include <cstdlib>

#include "text/command_output.h"
#include "text/line_reader.h"
#include "text/trim_blanks.h"

HeapText agent_version;

namespace {

constexpr char kVersionCommand[] = "exec /usr/sbin/vexaagent -v";
constexpr char kLibraryDirectory[] = "/etc/vexaagent/lib";
constexpr char kLibraryPath[] = "LD_LIBRARY_PATH";
constexpr std::size_t kReadLimit = 255;  // bytes a read

void ReadVersion() {
  std::FILE *output = OpenOutputOf(kVersionCommand);
  if (output == nullptr) {
    return;
  }
  std::string line;
  while (ReadLine(output, kReadLimit, line)) {
    agent_version = HeapText::Copy(VersionFromLine(line).c_str());
  }
  std::fclose(output);
}

}  // namespace

void QueryAgentVersion() {
  const char *old_path = std::getenv(kLibraryPath);
  const bool was_set = old_path != nullptr;
  const std::string path =
      was_set ? std::string(old_path) + ":" + kLibraryDirectory : kLibraryDirectory;
  setenv(kLibraryPath, path.c_str(), 1);
  ReadVersion();
  // Not put back, on purpose: the value from before was meant for this program, and the registry
  // client must not run with an extension of it.
  if (was_set) {
    unsetenv(kLibraryPath);
  }
}

std::string VersionFromLine(const std::string &line) {
  const std::size_t colon = line.find(':');
  return TrimmedBlanks(colon == std::string::npos ? line.c_str() : line.c_str() + colon + 1);
}
