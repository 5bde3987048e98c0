// The single-instance lock is an fcntl record lock, which the kernel drops when its process ends: a
// pid file that a dead instance has left keeps nobody out.
#include "app/single_instance.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "app/print_now.h"
#include "text/command_output.h"
#include "text/line_reader.h"

namespace {

constexpr std::size_t kPidLineLimit = 1023;  // bytes a read

enum class Lock { kTaken, kHeldByAnother, kFailed };

// Without waiting: the second instance has a window to raise.
Lock LockWholeFile(int file) {
  struct flock lock = {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = 0;
  lock.l_len = 0;  // to the end, however the file grows
  if (fcntl(file, F_SETLK, &lock) == 0) {
    return Lock::kTaken;
  }
  return errno == EACCES || errno == EAGAIN ? Lock::kHeldByAnother : Lock::kFailed;
}

// What an earlier holder left may be longer: the file is emptied first. False after an error.
bool WritePid(int file) {
  if (ftruncate(file, 0) != 0) {
    PrintNow("ftruncate error");
    return false;
  }
  const std::string pid = std::to_string(getpid()) + "\n";
  if (write(file, pid.data(), pid.size()) != static_cast<ssize_t>(pid.size())) {
    PrintNow("write error");
    return false;
  }
  return true;
}

// It is set from the opening on, and set again so that a refusal is reported.
void CloseOnExec(int file) {
  int flags = fcntl(file, F_GETFD);
  if (flags < 0) {
    PrintNow("fcntl F_GETFD error");
    flags = 0;
  }
  if (fcntl(file, F_SETFD, flags | FD_CLOEXEC) < 0) {
    PrintNow("fcntl F_SETFD error");
  }
}

std::int32_t PidFromText(const std::string &text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const long number = std::strtol(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long>(number, Limits::min(), Limits::max()));
}

}  // namespace

// The descriptor is never closed: closing it would drop the lock.
bool AnotherInstanceHoldsLock(const char *pid_file) {
  // Close-on-exec from the start, for the commands that run when the lock is another's.
  const int file = open(pid_file, O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (file < 0) {
    PrintNow("open file error\n");
    return false;
  }
  switch (LockWholeFile(file)) {
    case Lock::kTaken:
      break;
    case Lock::kHeldByAnother:
      PrintNow("pid file locked already.\n");
      return true;
    case Lock::kFailed:
      PrintNow("write_lock error");
      return false;
  }
  if (WritePid(file)) {
    CloseOnExec(file);
  }
  return false;
}

// Through the shell: AnotherInstanceHoldsLock alone opens the file, and once.
std::optional<std::int32_t> RunningInstancePid(const char *pid_file) {
  std::FILE *output = OpenOutputOf(std::string("exec cat ") + pid_file);
  if (output == nullptr) {
    return std::nullopt;
  }
  std::string line;
  ReadLine(output, kPidLineLimit, line);
  std::fclose(output);
  return PidFromText(line);
}
