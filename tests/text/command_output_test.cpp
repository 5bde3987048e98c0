// Real commands: what is read of them, and that nothing waits for their end.
#include "text/command_output.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/descriptors.h"
#include "tests/support/refuse_call.h"
#include "tests/support/scoped_env.h"
#include "tests/support/temp_dir.h"

namespace {

std::string ReadAll(std::FILE *stream) {
  std::string text;
  for (int byte = std::getc(stream); byte != EOF; byte = std::getc(stream)) {
    text.push_back(static_cast<char>(byte));
  }
  return text;
}

std::string OutputOf(const std::string &command) {
  std::FILE *stream = OpenOutputOf(command);
  EXPECT_NE(stream, nullptr);
  std::string text = ReadAll(stream);
  std::fclose(stream);
  return text;
}

TEST(OpenOutputOf, ReadsWhatTheCommandPrintsInAShell) {
  EXPECT_EQ(OutputOf("echo one; echo \"$0\" | tr s S; printf three"), "one\nSh\nthree");
  EXPECT_EQ(OutputOf("true"), "");
}

TEST(OpenOutputOf, LeavesTheErrorsToGoWhereTheyWent) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(OutputOf("echo error >&2; echo out"), "out\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "error\n");
}

TEST(OpenOutputOf, HandsOnTheEnvironment) {
  const ScopedEnv variable("KORV_TEST_VALUE", "seen");
  EXPECT_EQ(OutputOf("echo $KORV_TEST_VALUE"), "seen\n");
}

// A command that lives on until the test opens the gate: a test that waited for it would never end.
class CommandThatLivesOn : public testing::Test {
 protected:
  CommandThatLivesOn() { EXPECT_EQ(mkfifo(gate_.c_str(), 0600), 0); }
  // Waits for the command to reach the gate.
  ~CommandThatLivesOn() override { directory_.Write("gate", "open\n"); }

  [[nodiscard]] std::string WaitAtGate() const { return "read word <" + gate_; }

 private:
  const TempDir directory_;
  const std::string gate_ = directory_.Path("gate");
};

TEST_F(CommandThatLivesOn, IsReadToTheEndOfItsOutput) {
  std::FILE *stream = OpenOutputOf("echo line; exec >&-; " + WaitAtGate());
  EXPECT_EQ(ReadAll(stream), "line\n");
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(CommandThatLivesOn, IsLeftAloneAfterItsFirstLine) {
  std::FILE *stream = OpenOutputOf("echo line; " + WaitAtGate());
  char line[10] = {};
  EXPECT_STREQ(std::fgets(line, sizeof line, stream), "line\n");
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST(OpenOutputOf, EndsACommandThatPrintsOnWhenNobodyReads) {
  const TempDir directory;
  const std::string gate = directory.Path("gate");
  ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
  std::FILE *stream = OpenOutputOf("yes; echo ended >" + gate);
  EXPECT_EQ(std::getc(stream), 'y');
  std::fclose(stream);
  EXPECT_EQ(directory.Read("gate"), "ended\n");
}

TEST(OpenOutputOf, LeavesNothingOpen) {
  std::FILE *other = OpenOutputOf("true");
  const int before = CountDescriptors();
  EXPECT_EQ(OutputOf(kListDescriptors), InheritedDescriptors());
  EXPECT_EQ(CountDescriptors(), before);
  std::fclose(other);
}

TEST(OpenOutputOf, IsNullWhenThereIsNoPipe) {
  const NoDescriptorsLeft fault;
  EXPECT_EQ(OpenOutputOf("true"), nullptr);
}

TEST(OpenOutputOf, IsNullWhenThereIsNoProcessOrNoShell) {
  for (const auto &calls : std::vector<std::vector<int>>{
           {SCMP_SYS(clone), SCMP_SYS(clone3), SCMP_SYS(vfork)}, {SCMP_SYS(execve)}}) {
    std::thread([&] {
      for (const int call : calls) {
        RefuseCall(call, EAGAIN);
      }
      const int before = CountDescriptors();
      EXPECT_EQ(OpenOutputOf("true"), nullptr);
      EXPECT_EQ(CountDescriptors(), before);
    }).join();
  }
}

// As it is for a program that was started without standard files.
TEST(OpenOutputOf, ReadsAlsoWhereThePipeIsTheStandardOutput) {
  EXPECT_EXIT(
      {
        close(0);
        close(1);
        std::quick_exit(ReadAll(OpenOutputOf("echo out")) == "out\n" ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
