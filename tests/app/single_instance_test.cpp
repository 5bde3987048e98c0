// The single-instance lock between real processes on a real file. Every process that takes the lock
// is a child, since a record lock does not keep out the process that holds it.
#include "app/single_instance.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/descriptors.h"
#include "tests/support/refuse_call.h"
#include "tests/support/temp_dir.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The outcome of taking the lock. The printed text was in the pipe by then, without any stream
// having been closed or any process having ended.
struct Outcome {
  bool held_by_another = false;
  std::string printed;
};

// A child that takes the lock at a given step of the test, and then lives until it is killed.
class Instance {
 public:
  using Step = std::function<void()>;

  explicit Instance(const std::string &pid_file, const Step &before = {}, const Step &after = {}) {
    std::array<int, 2> output = {};
    EXPECT_EQ(pipe(output.data()), 0);
    std::fflush(stdout);
    pid_ = fork();
    if (pid_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      dup2(output[1], STDOUT_FILENO);
      close(output[0]);
      close(output[1]);
      Run(pid_file, before, after);
    }
    close(output[1]);
    output_ = output[0];
  }
  Instance(const Instance &) = delete;
  Instance &operator=(const Instance &) = delete;
  ~Instance() {
    close(output_);
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }

  // Waits until the child has taken the lock or failed to.
  Outcome Wait() const {
    std::string text;
    std::array<char, 256> buffer = {};
    ssize_t count = 0;
    while ((count = read(output_, buffer.data(), buffer.size())) > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    EXPECT_THAT(text, testing::EndsWith("]"));
    const std::size_t verdict = text.rfind('[');
    return {text.substr(verdict) == "[held]", text.substr(0, verdict)};
  }

  [[nodiscard]] pid_t pid() const { return pid_; }

 private:
  [[noreturn]] static void Run(const std::string &pid_file, const Step &before, const Step &after) {
    if (before) {
      before();
    }
    const std::string verdict = AnotherInstanceHoldsLock(pid_file.c_str()) ? "[held]" : "[free]";
    if (after) {
      after();
    }
    if (write(STDOUT_FILENO, verdict.data(), verdict.size()) < 0) {
      std::abort();
    }
    close(STDOUT_FILENO);
    for (;;) {
      pause();
    }
  }

  pid_t pid_ = -1;
  int output_ = -1;
};

class SingleInstanceTest : public testing::Test {
 protected:
  [[nodiscard]] std::string Content() const { return directory_.Read("program.pid"); }

  void WriteContent(const std::string &content) const { directory_.Write("program.pid", content); }

  // The lock that conflicts with one on the whole file.
  [[nodiscard]] struct flock LockInTheWay() const {
    const int file = open(pid_file_.c_str(), O_RDWR);
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    EXPECT_EQ(fcntl(file, F_GETLK, &lock), 0);
    close(file);
    return lock;
  }

  // How many descriptors of a process are on the pid file.
  [[nodiscard]] long DescriptorsOf(pid_t pid) const {
    const std::filesystem::directory_iterator files("/proc/" + std::to_string(pid) + "/fd");
    return std::count_if(begin(files), end(files), [this](const auto &file) {
      std::error_code unreadable;
      return std::filesystem::read_symlink(file, unreadable) == pid_file_;
    });
  }

  const TempDir directory_;
  const std::string pid_file_ = directory_.Path("program.pid");
};

std::string PidLine(const Instance &instance) {
  return std::to_string(instance.pid()) + "\n";
}

// Makes a child command print the files that it has open.
void ListDescriptorsOfACommand() {
  if (std::system("readlink /proc/self/fd/*") == -1) {
    std::abort();
  }
}

// From here on the kernel answers this process's fcntl command with an error.
void RefuseFcntl(int command, int error) {
  RefuseCall(SCMP_SYS(fcntl), error, {{1, SCMP_CMP_EQ, static_cast<scmp_datum_t>(command), 0}});
}

// From here on no file of this process grows beyond `size` bytes.
void LimitFileSize(rlim_t size) {
  const rlimit limit = {size, RLIM_INFINITY};
  signal(SIGXFSZ, SIG_IGN);
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
    std::abort();
  }
}

TEST_F(SingleInstanceTest, TheFirstTakesTheLockAndWritesItsPid) {
  const Instance first(pid_file_, [] { umask(0); });
  const Outcome outcome = first.Wait();
  EXPECT_FALSE(outcome.held_by_another);
  EXPECT_EQ(outcome.printed, "");
  EXPECT_EQ(Content(), PidLine(first));
  EXPECT_EQ(std::filesystem::status(pid_file_).permissions(), std::filesystem::perms(0644));
}

TEST_F(SingleInstanceTest, TheLockIsAWriteLockOnTheWholeFile) {
  const Instance first(pid_file_);
  first.Wait();
  const struct flock lock = LockInTheWay();
  EXPECT_EQ(lock.l_type, F_WRLCK);
  EXPECT_EQ(lock.l_pid, first.pid());
  EXPECT_EQ(lock.l_start, 0);
  EXPECT_EQ(lock.l_len, 0);
}

TEST_F(SingleInstanceTest, TheDescriptorStaysOpenOnce) {
  const Instance first(pid_file_);
  first.Wait();
  EXPECT_EQ(DescriptorsOf(first.pid()), 1);
}

TEST_F(SingleInstanceTest, TheSecondIsToldAndChangesNothing) {
  const Instance first(pid_file_);
  first.Wait();
  for (int round = 0; round < 2; ++round) {
    const Instance second(pid_file_);
    const Outcome outcome = second.Wait();
    EXPECT_TRUE(outcome.held_by_another);
    EXPECT_EQ(outcome.printed, "pid file locked already.\n");
    EXPECT_EQ(Content(), PidLine(first));
  }
}

TEST_F(SingleInstanceTest, ALockOnPartOfTheFileIsInTheWayToo) {
  const Instance holder(directory_.Path("unused"), [this] {
    const int file = open(pid_file_.c_str(), O_RDWR | O_CREAT, 0600);
    struct flock far_byte = {};
    far_byte.l_type = F_RDLCK;
    far_byte.l_start = 1000000;
    far_byte.l_len = 1;
    fcntl(file, F_SETLK, &far_byte);
  });
  holder.Wait();
  EXPECT_TRUE(Instance(pid_file_).Wait().held_by_another);
}

TEST_F(SingleInstanceTest, TheLockDiesWithItsProcess) {
  auto first = std::make_unique<Instance>(pid_file_);
  first->Wait();
  const std::string stale = PidLine(*first);
  first.reset();
  EXPECT_EQ(Content(), stale);
  const Instance next(pid_file_);
  EXPECT_FALSE(next.Wait().held_by_another);
  EXPECT_EQ(Content(), PidLine(next));
}

TEST_F(SingleInstanceTest, NothingStaysOfALongerOldContent) {
  WriteContent("123456789012345678\nand more\n");
  const Instance first(pid_file_);
  EXPECT_FALSE(first.Wait().held_by_another);
  EXPECT_EQ(Content(), PidLine(first));
}

TEST_F(SingleInstanceTest, ChildCommandsDoNotInheritTheDescriptor) {
  const Instance first(pid_file_, {}, ListDescriptorsOfACommand);
  const Outcome outcome = first.Wait();
  EXPECT_THAT(outcome.printed, HasSubstr("pipe:"));  // the command's output
  EXPECT_THAT(outcome.printed, Not(HasSubstr(pid_file_)));
  EXPECT_TRUE(Instance(pid_file_).Wait().held_by_another);
}

TEST_F(SingleInstanceTest, OfManyAtOnceExactlyOneGetsTheLock) {
  for (int round = 0; round < 25; ++round) {
    std::array<int, 2> gate = {};
    ASSERT_EQ(pipe(gate.data()), 0);
    const auto wait_at_gate = [gate] {
      char byte = 0;
      close(gate[1]);
      if (read(gate[0], &byte, 1) != 0) {
        std::abort();
      }
    };
    std::vector<std::unique_ptr<Instance>> instances;
    for (int count = 0; count < 6; ++count) {
      instances.push_back(std::make_unique<Instance>(pid_file_, wait_at_gate));
    }
    close(gate[0]);
    close(gate[1]);  // opens it
    std::vector<pid_t> winners;
    for (const auto &instance : instances) {
      if (!instance->Wait().held_by_another) {
        winners.push_back(instance->pid());
      }
    }
    ASSERT_EQ(winners.size(), 1U);
    EXPECT_EQ(Content(), std::to_string(winners[0]) + "\n");
  }
}

TEST_F(SingleInstanceTest, AFileThatCannotBeOpenedIsSaidAndNoLock) {
  for (const auto &path : {directory_.Path("missing/program.pid"), directory_.Path()}) {
    const Outcome outcome = Instance(path).Wait();
    EXPECT_FALSE(outcome.held_by_another);
    EXPECT_EQ(outcome.printed, "open file error\n");
  }
}

TEST_F(SingleInstanceTest, BothErrorsOfAHeldLockMeanHeld) {
  for (const int error : {EACCES, EAGAIN}) {
    const Outcome outcome = Instance(pid_file_, [error] { RefuseFcntl(F_SETLK, error); }).Wait();
    EXPECT_TRUE(outcome.held_by_another);
    EXPECT_EQ(outcome.printed, "pid file locked already.\n");
  }
}

TEST_F(SingleInstanceTest, AnyOtherLockErrorIsSaidAndLeavesTheFileAlone) {
  WriteContent("old\n");
  const Outcome outcome = Instance(pid_file_, [] { RefuseFcntl(F_SETLK, ENOLCK); }).Wait();
  EXPECT_FALSE(outcome.held_by_another);
  EXPECT_EQ(outcome.printed, "write_lock error");
  EXPECT_EQ(Content(), "old\n");
}

// A pipe can be locked, but has no length.
TEST_F(SingleInstanceTest, AFileThatCannotBeEmptiedIsSaid) {
  ASSERT_EQ(mkfifo(pid_file_.c_str(), 0600), 0);
  const int reader = open(pid_file_.c_str(), O_RDONLY | O_NONBLOCK);
  const Instance first(pid_file_);
  const Outcome outcome = first.Wait();
  EXPECT_FALSE(outcome.held_by_another);
  EXPECT_EQ(outcome.printed, "ftruncate error");
  char byte = 0;
  EXPECT_EQ(read(reader, &byte, 1), -1);  // nothing was written
  close(reader);
}

TEST_F(SingleInstanceTest, AShortWriteIsSaidAndTheLockStays) {
  for (const rlim_t size : {0U, 1U}) {
    const Instance first(
        pid_file_, [size] { LimitFileSize(size); }, [] { LimitFileSize(RLIM_INFINITY); });
    const Outcome outcome = first.Wait();
    EXPECT_FALSE(outcome.held_by_another);
    EXPECT_EQ(outcome.printed, "write error");
    EXPECT_EQ(Content(), PidLine(first).substr(0, size));
    EXPECT_EQ(LockInTheWay().l_pid, first.pid());
  }
}

TEST_F(SingleInstanceTest, FlagsThatCannotBeReadAreSaidAndTheLockStays) {
  const Instance first(
      pid_file_, [] { RefuseFcntl(F_GETFD, EBADF); }, ListDescriptorsOfACommand);
  const Outcome outcome = first.Wait();
  EXPECT_FALSE(outcome.held_by_another);
  EXPECT_THAT(outcome.printed, StartsWith("fcntl F_GETFD error"));
  EXPECT_THAT(outcome.printed, HasSubstr("pipe:"));
  EXPECT_THAT(outcome.printed, Not(HasSubstr(pid_file_)));  // close-on-exec nevertheless
  EXPECT_EQ(Content(), PidLine(first));
  EXPECT_EQ(LockInTheWay().l_pid, first.pid());
}

TEST_F(SingleInstanceTest, FlagsThatCannotBeSetAreSaidAndTheLockStays) {
  const Instance first(pid_file_, [] { RefuseFcntl(F_SETFD, EBADF); });
  const Outcome outcome = first.Wait();
  EXPECT_FALSE(outcome.held_by_another);
  EXPECT_EQ(outcome.printed, "fcntl F_SETFD error");
  EXPECT_EQ(Content(), PidLine(first));
  EXPECT_EQ(LockInTheWay().l_pid, first.pid());
}

TEST_F(SingleInstanceTest, TheRunningInstancesPidIsTheNumberAtTheStartOfTheFile) {
  for (const auto &[content, pid] : std::vector<std::pair<std::string, std::int32_t>>{
           {"4711\n", 4711},
           {"4711", 4711},
           {" \t4711 and more", 4711},
           {"4711\n4712\n", 4711},
           {"-5\n", -5},
           {"010\n", 10},  // decimal, whatever it looks like
           {"0x10\n", 0},
           {"99999999999999999999", 2147483647},
           {"-99999999999", -2147483647 - 1},
       }) {
    WriteContent(content);
    EXPECT_EQ(RunningInstancePid(pid_file_.c_str()), pid) << content;
  }
}

TEST_F(SingleInstanceTest, TheRunningInstancesPidIsZeroWithoutDigits) {
  for (const std::string content : {"", "\n", "\n4711\n", "x4711"}) {
    WriteContent(content);
    EXPECT_EQ(RunningInstancePid(pid_file_.c_str()), 0) << content;
  }
}

TEST_F(SingleInstanceTest, OfThePidLine1023BytesCount) {
  for (const auto &[length, pid] :
       std::vector<std::pair<std::size_t, std::int32_t>>{{1022, 4711}, {1023, 4711}, {1024, 471}}) {
    WriteContent(std::string(length - 4, ' ') + "4711\n");
    EXPECT_EQ(RunningInstancePid(pid_file_.c_str()), pid) << length;
  }
}

TEST_F(SingleInstanceTest, ThereIsNoPidWhenTheCommandCannotBeStarted) {
  WriteContent("4711\n");
  const NoDescriptorsLeft fault;
  EXPECT_EQ(RunningInstancePid(pid_file_.c_str()), std::nullopt);
}

}  // namespace
