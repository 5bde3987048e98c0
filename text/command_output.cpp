// Starts a command on a pipe of the program's own, because popen's stream waits for the command
// when it is closed.
#include "text/command_output.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace {

bool StartShell(const std::string &command, int output) {
  char shell[] = "sh";
  char option[] = "-c";
  char *const arguments[] = {shell, option, const_cast<char *>(command.c_str()), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const bool started = posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO) == 0 &&
                       posix_spawn(nullptr, "/bin/sh", &actions, nullptr, arguments, environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  return started;
}

}  // namespace

std::FILE *OpenOutputOf(const std::string &command) {
  int ends[2];
  // Close-on-exec: a command that held the reading end itself would never notice that nobody reads.
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return nullptr;
  }
  const bool started = StartShell(command, ends[1]);
  close(ends[1]);
  std::FILE *stream = started ? fdopen(ends[0], "r") : nullptr;
  if (stream == nullptr) {
    close(ends[0]);
  }
  return stream;
}
