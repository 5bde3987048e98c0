// Command lines, the shells that run them, and the pipe from which their output is read.
#include "settings/command_runner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>

namespace {

// The limit handed to the formatter is two bytes short of the buffer: whether a long value is saved
// or cut must not change from one version to the next.
constexpr std::size_t kBufferSize = 4096;
constexpr std::size_t kFormatLimit = 4094;

using CommandLine = std::array<char, kBufferSize>;

CommandLine FormatCommand(const char *format, va_list arguments) {
  CommandLine command{};
  std::vsnprintf(command.data(), kFormatLimit, format, arguments);
  return command;
}

struct Pipe {
  int read_end = -1;
  int write_end = -1;
};

// In the child: puts the pipe on descriptors 1 and 2. A write end that is descriptor 1 already
// stays as it is, and descriptor 2 with it.
void JoinOutputs(const Pipe &pipe) {
  close(pipe.read_end);
  if (pipe.write_end != STDOUT_FILENO) {
    dup2(pipe.write_end, STDOUT_FILENO);
    dup2(pipe.write_end, STDERR_FILENO);
    if (pipe.write_end != STDERR_FILENO) {
      close(pipe.write_end);
    }
  }
}

// Starts /bin/sh on the command line; returns the child, or -1. vfork, because copying the page
// tables of a process with a toolkit loaded costs more than everything else here: the child only
// moves descriptors and executes. _exit, so that it never flushes what the parent has buffered.
pid_t StartShell(const char *command, const Pipe *output) {
  char shell[] = "sh";
  char option[] = "-c";
  char *const arguments[] = {shell, option, const_cast<char *>(command), nullptr};
  // NOLINTBEGIN(clang-analyzer-security.insecureAPI.vfork,clang-analyzer-unix.Vfork)
  const pid_t child = vfork();
  if (child == 0) {
    if (output != nullptr) {
      JoinOutputs(*output);
    }
    execv("/bin/sh", arguments);
    _exit(127);
  }
  // NOLINTEND(clang-analyzer-security.insecureAPI.vfork,clang-analyzer-unix.Vfork)
  return child;
}

}  // namespace

int CommandRunner::RunCommand(const char *format, ...) {
  if (format == nullptr) {
    return 1;
  }
  va_list arguments;
  va_start(arguments, format);
  const CommandLine command = FormatCommand(format, arguments);
  va_end(arguments);

  const pid_t child = StartShell(command.data(), nullptr);
  return child < 0 ? -1 : WaitChild(child);
}

int CommandRunner::OpenCommandOutput(std::FILE **stream, pid_t *child, const char *format, ...) {
  *stream = nullptr;
  *child = -1;
  va_list arguments;
  va_start(arguments, format);
  const CommandLine command = FormatCommand(format, arguments);
  va_end(arguments);

  int ends[2];
  if (pipe(ends) != 0) {
    return 1;
  }
  const Pipe output{ends[0], ends[1]};
  *child = StartShell(command.data(), &output);
  close(output.write_end);
  if (*child < 0) {
    close(output.read_end);
    return -1;
  }
  *stream = fdopen(output.read_end, "r");
  if (*stream == nullptr) {
    close(output.read_end);
    return 1;
  }
  return 0;
}

int CommandRunner::WaitChild(pid_t child) {
  for (;;) {
    int status = 0;
    if (waitpid(child, &status, 0) == -1) {
      if (errno != EINTR) {
        return -1;
      }
    } else if ((status & 0x7f) == 0) {
      return (status >> 8) & 0xff;
    }
    // Ended by a signal: the next wait finds no such child, and that is the result. On purpose,
    // signals have no separate branch; the callers know only "-1".
  }
}
