// The yardstick for one refresh: for each line of its input, one get of the current gateway through
// /bin/sh, read to its end. Prints the processor time that it took, in microseconds, the child's
// included.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr char kCommand[] = "regmux get 'root/vexa/agent/CurrentGateway'";

long Microseconds(const timeval &time) {
  return time.tv_sec * 1000000L + time.tv_usec;
}

long UsedBy(int who) {
  rusage usage = {};
  getrusage(who, &usage);
  return Microseconds(usage.ru_utime) + Microseconds(usage.ru_stime);
}

long Used() {
  return UsedBy(RUSAGE_SELF) + UsedBy(RUSAGE_CHILDREN);
}

// Both outputs on one pipe, as the program has them.
pid_t StartGet(const int (&pipe_ends)[2]) {
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipe_ends[1], STDOUT_FILENO);
    dup2(pipe_ends[1], STDERR_FILENO);
    close(pipe_ends[0]);
    close(pipe_ends[1]);
    execl("/bin/sh", "sh", "-c", kCommand, nullptr);
    _exit(127);
  }
  return child;
}

bool Get() {
  int pipe_ends[2];
  if (pipe(pipe_ends) != 0) {
    return false;
  }
  const pid_t child = StartGet(pipe_ends);
  close(pipe_ends[1]);
  char answer[256];
  bool answered = false;
  while (read(pipe_ends[0], answer, sizeof answer) > 0) {
    answered = true;
  }
  close(pipe_ends[0]);
  return child > 0 && waitpid(child, nullptr, 0) == child && answered;
}

}  // namespace

int main() {
  while (std::getchar() != EOF) {
    const long before = Used();
    if (!Get()) {
      return 1;
    }
    std::printf("%ld\n", Used() - before);
    std::fflush(stdout);
  }
  return 0;
}
