// The settings file on a full disk. Runs in a sandbox in which /mnt is a disk of 8 KiB.
#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include <cstring>
#include <fstream>
#include <string>

#include "settings/xml/settings_file.h"

namespace {

constexpr char kPath[] = "/mnt/settings.xml";
constexpr char kFiller[] = "/mnt/filler";

class FullDisk : public testing::Test {
 protected:
  void SetUp() override {
    struct statvfs disk;
    ASSERT_EQ(statvfs("/mnt", &disk), 0);
    ASSERT_EQ(disk.f_blocks * disk.f_frsize, 8192U) << "not inside the sandbox";
  }
  ~FullDisk() override {
    SaveSettingsFile(0);
    std::remove(kPath);
    std::remove(kFiller);
  }

  static void FillTheDisk() { std::ofstream(kFiller) << std::string(8192, 'x'); }
};

TEST_F(FullDisk, ADocumentThatDoesNotFitGivesMinusOneAndNoSignal) {
  ASSERT_EQ(EnsureSettingsFile(kPath), 0);
  ASSERT_EQ(LoadSettingsFile(kPath), 0);
  SimpleXmlParserSet("/Agent/PreAssignGroups", strdup(std::string(20000, 'x').c_str()));
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_STREQ(SimpleXmlParserGet("/Agent/LogLevel"), "2");
  FillTheDisk();
  EXPECT_EQ(LoadSettingsFile(kPath), -1) << "the file is not empty";
  std::remove(kFiller);
  SimpleXmlParserSet("/Agent/PreAssignGroups", strdup("fits"));
  EXPECT_EQ(SaveSettingsFile(1), 0);
}

TEST_F(FullDisk, ADocumentMayFillTheDisk) {
  std::ofstream(kPath) << "<a/>";
  ASSERT_EQ(LoadSettingsFile(kPath), 0);
  const std::string value(8192 - strlen("<a></a>\n"), 'x');
  SimpleXmlParserSet("/a", strdup(value.c_str()));
  EXPECT_EQ(SaveSettingsFile(1), 0);
  ASSERT_EQ(LoadSettingsFile(kPath), 0);
  EXPECT_EQ(SimpleXmlParserGet("/a"), value);
}

TEST_F(FullDisk, TheDefaultDocumentCannotBeWritten) {
  FillTheDisk();
  EXPECT_EQ(EnsureSettingsFile(kPath), -1);
}

}  // namespace
