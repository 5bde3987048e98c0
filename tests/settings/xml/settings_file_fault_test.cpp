// The settings file when a system call fails.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "settings/xml/settings_file.h"
#include "tests/settings/xml/is_mapped.h"
#include "tests/support/descriptors.h"
#include "tests/support/refuse_call.h"
#include "tests/support/temp_dir.h"

namespace {

// A system call that fails with this error when it has these arguments. With error 0, it returns 0
// and does nothing.
struct Fault {
  const char *what;
  int call;
  int error;
  std::vector<scmp_arg_cmp> arguments;
};

std::ostream &operator<<(std::ostream &stream, const Fault &fault) {
  return stream << fault.what;
}

// The result of the operation on a thread of its own, the only one to which the fault happens.
template <typename Operation>
int OnAThreadWithFault(const Fault &fault, Operation operation) {
  int result = 0;
  std::thread([&] {
    RefuseCall(fault.call, fault.error, fault.arguments);
    if (fault.call == SCMP_SYS(newfstatat)) {  // later versions of the C library make this of fstat
      RefuseCall(SCMP_SYS(fstat), fault.error);
    }
    result = operation();
  }).join();
  return result;
}

scmp_arg_cmp FlagsHold(unsigned argument, std::uint64_t flags) {
  return {argument, SCMP_CMP_MASKED_EQ, flags, flags};
}

scmp_arg_cmp Is(unsigned argument, std::uint64_t value) {
  return {argument, SCMP_CMP_EQ, value, 0};
}

constexpr char kSource[] = "<a>one</a>";
constexpr char kSaved[] = "<a>two</a>\n";

// Only the file is mapped as shared; the allocator maps its memory as private.
const Fault kMmapFails = {"mmap", SCMP_SYS(mmap), ENOMEM, {FlagsHold(3, MAP_SHARED)}};
const Fault kCloseFails = {"close", SCMP_SYS(close), EIO, {}};

class FaultTest : public testing::TestWithParam<Fault> {
 protected:
  ~FaultTest() override { SaveSettingsFile(0); }

  // Also checks that the operation closes and unmaps everything, unless it is that which fails.
  template <typename Operation>
  int WithFault(const Fault &fault, Operation operation) {
    const int before = CountDescriptors();
    const int result = OnAThreadWithFault(fault, operation);
    if (fault.call != SCMP_SYS(close)) {
      EXPECT_EQ(CountDescriptors(), before);
    }
    EXPECT_EQ(IsMapped(path_), fault.call == SCMP_SYS(munmap));
    return result;
  }

  TempDir directory_;
  std::string path_ = directory_.Write("settings.xml", kSource);
};

using SaveFault = FaultTest;
using LoadFault = FaultTest;
using EnsureFault = FaultTest;

TEST_P(SaveFault, GivesMinusOneAndKeepsTheDocument) {
  ASSERT_EQ(LoadSettingsFile(path_.c_str()), 0);
  SimpleXmlParserSet("/a", strdup("two"));
  EXPECT_EQ(WithFault(GetParam(), [] { return SaveSettingsFile(1); }), -1);
  ASSERT_NE(SimpleXmlParserGet("/a"), nullptr);
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "two");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(directory_.Read("settings.xml"), kSaved);
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, SaveFault,
    testing::Values(Fault{"openat", SCMP_SYS(openat), EROFS, {FlagsHold(2, O_CLOEXEC)}},
                    Fault{"ftruncate", SCMP_SYS(ftruncate), EIO, {}},
                    Fault{"fallocate", SCMP_SYS(fallocate), ENOSPC, {}}, kMmapFails, kCloseFails,
                    Fault{"msync", SCMP_SYS(msync), EIO, {FlagsHold(2, MS_SYNC)}},
                    Fault{"munmap", SCMP_SYS(munmap), EINVAL, {Is(1, sizeof kSaved - 1)}}),
    testing::PrintToStringParamName());

TEST_F(FaultTest, WithoutSpaceTheFileIsLeftEmpty) {
  ASSERT_EQ(LoadSettingsFile(path_.c_str()), 0);
  const Fault fault = {"fallocate", SCMP_SYS(fallocate), ENOSPC, {}};
  EXPECT_EQ(WithFault(fault, [] { return SaveSettingsFile(1); }), -1);
  EXPECT_EQ(directory_.Read("settings.xml"), "");
}

TEST_P(LoadFault, GivesMinusOneAndKeepsTheDocumentBefore) {
  ASSERT_EQ(LoadSettingsFile(directory_.Write("before.xml", "<a>before</a>").c_str()), 0);
  EXPECT_EQ(WithFault(GetParam(), [this] { return LoadSettingsFile(path_.c_str()); }), -1);
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "before");
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, LoadFault,
    testing::Values(Fault{"openat", SCMP_SYS(openat), EACCES, {FlagsHold(2, O_CLOEXEC)}},
                    Fault{"fstat", SCMP_SYS(newfstatat), EIO, {}}, kMmapFails, kCloseFails),
    testing::PrintToStringParamName());

TEST_F(FaultTest, LoadingGivesMinusOneWithTheNewDocumentWhenUnmappingFails) {
  const Fault fault = {"munmap", SCMP_SYS(munmap), EINVAL, {Is(1, sizeof kSource - 1)}};
  EXPECT_EQ(WithFault(fault, [this] { return LoadSettingsFile(path_.c_str()); }), -1);
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "one");
}

TEST_P(EnsureFault, GivesMinusOne) {
  const std::string path = directory_.Path("one/settings.xml");
  EXPECT_EQ(WithFault(GetParam(), [&path] { return EnsureSettingsFile(path.c_str()); }), -1);
}

INSTANTIATE_TEST_SUITE_P(EachStep, EnsureFault,
                         testing::Values(Fault{"mkdir", SCMP_SYS(mkdir), EACCES, {}},
                                         Fault{"openat",
                                               SCMP_SYS(openat),
                                               EACCES,
                                               {FlagsHold(2, O_CREAT | O_DSYNC | O_CLOEXEC)}},
                                         Fault{"write", SCMP_SYS(write), ENOSPC, {Is(2, 247)}},
                                         Fault{"write_of_none", SCMP_SYS(write), 0, {Is(2, 247)}},
                                         kCloseFails),
                         testing::PrintToStringParamName());

TEST_F(FaultTest, ADirectoryThatCannotBeLookedAtCannotBeMadeEither) {
  const Fault fault = {"stat", SCMP_SYS(newfstatat), EIO, {}};
  EXPECT_EQ(WithFault(fault, [this] { return EnsureSettingsFile(path_.c_str()); }), -1);
}

TEST_F(FaultTest, AnExistingFileThatCannotBeOpenedCannotBeMadeEither) {
  const Fault fault = {"openat", SCMP_SYS(openat), EACCES, {FlagsHold(2, O_CLOEXEC)}};
  EXPECT_EQ(WithFault(fault, [this] { return EnsureSettingsFile(path_.c_str()); }), -1);
  EXPECT_EQ(directory_.Read("settings.xml"), kSource);
}

TEST_F(FaultTest, AnExistingFileIsThereEvenIfClosingItFails) {
  EXPECT_EQ(WithFault(kCloseFails, [this] { return EnsureSettingsFile(path_.c_str()); }), 0);
}

// The result of the operation on a thread that permissions apply to, even when the superuser runs
// the test.
template <typename Operation>
int AsNobody(Operation operation) {
  int result = 0;
  std::thread([&] {
    setfsuid(65534);
    result = operation();
  }).join();
  return result;
}

TEST_F(FaultTest, AFileThatIsReadOnlyIsNeitherLoadedNorSaved) {
  std::filesystem::permissions(directory_.Path(), std::filesystem::perms{0755});
  ASSERT_EQ(LoadSettingsFile(path_.c_str()), 0);
  ASSERT_EQ(chmod(path_.c_str(), 0444), 0);
  EXPECT_EQ(AsNobody([] { return SaveSettingsFile(1); }), -1);
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "one");
  EXPECT_EQ(AsNobody([this] { return LoadSettingsFile(path_.c_str()); }), -1);
  EXPECT_EQ(AsNobody([this] { return EnsureSettingsFile(path_.c_str()); }), -1);
  EXPECT_EQ(directory_.Read("settings.xml"), kSource);
}

TEST_F(FaultTest, SavingFailsWhenTheDirectoryHasVanished) {
  directory_.MakeDirectory("gone");
  ASSERT_EQ(LoadSettingsFile(directory_.Write("gone/settings.xml", kSource).c_str()), 0);
  std::filesystem::remove_all(directory_.Path("gone"));
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_FALSE(std::filesystem::exists(directory_.Path("gone")));
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "one");
}

TEST_F(FaultTest, SavingFailsWhenADirectoryHasTakenTheFilesPlace) {
  ASSERT_EQ(LoadSettingsFile(path_.c_str()), 0);
  std::filesystem::remove(path_);
  directory_.MakeDirectory("settings.xml");
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_STREQ(SimpleXmlParserGet("/a"), "one");
}

}  // namespace
