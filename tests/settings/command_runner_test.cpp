// Real commands in real shells: their results, what is read of them, and what can fail.
#include "settings/command_runner.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <string>
#include <thread>

#include "tests/support/descriptors.h"
#include "tests/support/refuse_call.h"
#include "tests/support/temp_dir.h"

using CommandRunner::OpenCommandOutput;
using CommandRunner::RunCommand;
using CommandRunner::WaitChild;

namespace {

struct Output {
  int result = 0;
  std::string text;
  pid_t child = 0;
};

template <typename... Arguments>
Output RunAndReadFormat(const char *format, Arguments... arguments) {
  Output output;
  std::FILE *stream = nullptr;
  output.result = OpenCommandOutput(&stream, &output.child, format, arguments...);
  if (stream != nullptr) {
    for (int byte = std::getc(stream); byte != EOF; byte = std::getc(stream)) {
      output.text.push_back(static_cast<char>(byte));
    }
    std::fclose(stream);
  }
  return output;
}

// As it stands, percent signs and all.
Output RunAndRead(const char *command) {
  return RunAndReadFormat("%s", command);
}

// Runs `body` in a child of its own, whose descriptors and limits it may spoil; its exit code.
template <typename Body>
int InChild(Body body) {
  const pid_t child = fork();
  if (child == 0) {
    std::quick_exit(body());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(RunCommand, GivesTheExitCode) {
  EXPECT_EQ(RunCommand("exit %d", 0), 0);
  EXPECT_EQ(RunCommand("exit %d", 3), 3);
  EXPECT_EQ(RunCommand("exit %d", 255), 255);
}

TEST(RunCommand, ACommandThatDoesNotExistGives127) {
  EXPECT_EQ(RunCommand("/nowhere/at/all 2>/dev/null"), 127);
}

// Runs `body` on a thread of its own for which the kernel refuses these calls.
template <typename Body>
void Without(std::initializer_list<int> calls, int error, Body body) {
  std::thread([&] {
    for (const int call : calls) {
      RefuseCall(call, error);
    }
    body();
  }).join();
}

template <typename Body>
void WithoutExecution(Body body) {
  Without({SCMP_SYS(execve)}, ENOEXEC, body);
}

TEST(RunCommand, WithoutAShellItGives127) {
  WithoutExecution([] { EXPECT_EQ(RunCommand("true"), 127); });
}

TEST(RunCommand, AShellKilledByASignalGivesMinusOne) {
  EXPECT_EQ(RunCommand("kill -KILL $$"), -1);
  EXPECT_EQ(RunCommand("kill -TERM $$"), -1);
}

TEST(RunCommand, ANullFormatGivesOne) {
  // Through a pointer: the compiler warns of a null format where it sees one.
  int (*run)(const char *, ...) = RunCommand;
  EXPECT_EQ(run(nullptr), 1);
}

TEST(RunCommand, FailsWhenNoChildCanBeMade) {
  Without({SCMP_SYS(vfork), SCMP_SYS(clone)}, EAGAIN, [] {
    EXPECT_EQ(RunCommand("true"), -1);
    const int descriptors = CountDescriptors();
    const Output output = RunAndRead("true");
    EXPECT_EQ(output.result, -1);
    EXPECT_EQ(output.child, -1);
    EXPECT_EQ(CountDescriptors(), descriptors);
  });
}

TEST(RunCommand, ItsShellIsCalledSh) {
  EXPECT_EQ(RunCommand("test \"$0\" = sh"), 0);
}

TEST(RunCommand, InheritsTheEnvironment) {
  setenv("KORV_TEST_VALUE", "seen", 1);
  EXPECT_EQ(RunCommand("test \"$KORV_TEST_VALUE\" = seen"), 0);
  unsetenv("KORV_TEST_VALUE");
}

TEST(RunCommand, CutsTheCommandLineAt4093Bytes) {
  // An assignment fills the line, and the last bytes decide the status.
  const std::string filler(4093 - std::string("a=;exit 12").size(), 'x');
  EXPECT_EQ(RunCommand("a=%s;exit %s", filler.c_str(), "12"), 12);
  EXPECT_EQ(RunCommand("a=%s;exit %s", filler.c_str(), "123"), 12);
  EXPECT_EQ(RunCommand("a=%s;exit %s", (filler + "x").c_str(), "12"), 1);
}

TEST(RunCommand, WaitsOnWhenASignalInterrupts) {
  struct sigaction action = {};
  action.sa_handler = [](int) {};  // without SA_RESTART: waitpid returns with EINTR
  struct sigaction old_action = {};
  sigaction(SIGALRM, &action, &old_action);
  const itimerval often{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &often, nullptr);
  EXPECT_EQ(RunCommand("i=0; while [ $i -lt 20000 ]; do i=$((i+1)); done; exit 5"), 5);
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &old_action, nullptr);
}

TEST(RunCommand, ItsChildDoesNothingThatThisProgramDoesAtItsEnd) {
  const TempDir directory;
  const std::string path = directory.Write("output", "");
  EXPECT_EQ(InChild([&path] {
              if (std::freopen(path.c_str(), "w", stdout) == nullptr) {
                return 77;
              }
              std::atexit([] { std::printf("at exit\n"); });
              std::printf("once\n");  // buffered: a file is not a terminal
              RunCommand("true");
              WithoutExecution([] { RunCommand("true"); });
              std::fflush(stdout);
              return 0;
            }),
            0);
  EXPECT_EQ(directory.Read("output"), "once\n");
}

TEST(WaitChild, NoSuchChildGivesMinusOne) {
  EXPECT_EQ(WaitChild(getpid()), -1);
}

TEST(OpenCommandOutput, ReadsBothOutputsInOrder) {
  const Output output = RunAndReadFormat("echo %s; echo two >&2; echo three", "one");
  EXPECT_EQ(output.result, 0);
  EXPECT_EQ(output.text, "one\ntwo\nthree\n");
  EXPECT_GT(output.child, 0);
  EXPECT_EQ(WaitChild(output.child), 0);
}

TEST(OpenCommandOutput, LeavesTheChildToBeWaitedFor) {
  const Output output = RunAndRead("exit 4");
  EXPECT_EQ(output.text, "");
  EXPECT_EQ(WaitChild(output.child), 4);
}

TEST(OpenCommandOutput, AMissingCommandIsReportedByTheShellOnTheSameStream) {
  const Output output = RunAndRead("/nowhere/at/all");
  EXPECT_NE(output.text.find("/nowhere/at/all"), std::string::npos);
  EXPECT_EQ(WaitChild(output.child), 127);
}

TEST(OpenCommandOutput, LeavesNoDescriptorOpen) {
  const int before = CountDescriptors();
  WaitChild(RunAndRead("true").child);
  EXPECT_EQ(CountDescriptors(), before);
}

TEST(OpenCommandOutput, LeavesNoEndOfThePipeOpenInTheCommand) {
  const std::string inherited = InheritedDescriptors();
  const Output output = RunAndRead(kListDescriptors);
  EXPECT_EQ(output.text, inherited);
  WaitChild(output.child);
}

TEST(OpenCommandOutput, FailsWithOneWhenThereIsNoPipe) {
  const NoDescriptorsLeft fault;
  const Output output = RunAndRead("true");
  EXPECT_EQ(output.result, 1);
  EXPECT_EQ(output.child, -1);
}

TEST(OpenCommandOutput, RedirectsNothingWhenThePipeIsDescriptorOneAlready) {
  const TempDir directory;
  const std::string errors = directory.Write("errors", "");
  EXPECT_EQ(InChild([&errors] {
              // Free the descriptors 0 and 1 for the pipe, so that its write end is 1.
              if (std::freopen(errors.c_str(), "w", stderr) == nullptr) {
                return 77;
              }
              close(0);
              close(1);
              return RunAndRead("echo out; echo error >&2").text == "out\n" ? 0 : 1;
            }),
            0);
  EXPECT_EQ(directory.Read("errors"), "error\n");
}

TEST(OpenCommandOutput, ReadsBothOutputsWhenThePipeIsDescriptorTwoAlready) {
  EXPECT_EQ(InChild([] {
              // Free the descriptors 0 and 2 for the pipe, so that its write end is 2.
              close(0);
              close(2);
              return RunAndRead("echo out; echo error >&2").text == "out\nerror\n" ? 0 : 1;
            }),
            0);
}

TEST(OpenCommandOutput, CutsTheCommandLineAsRunCommandDoes) {
  const std::string filler(4093 - std::string("a=;echo 12").size(), 'x');
  EXPECT_EQ(RunAndReadFormat("a=%s;echo %s", filler.c_str(), "12").text, "12\n");
  EXPECT_EQ(RunAndReadFormat("a=%s;echo %s", filler.c_str(), "123").text, "12\n");
}

}  // namespace
