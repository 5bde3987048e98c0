// The settings file: what is created, loaded, read, set and saved when the system does its part.
#include "settings/xml/settings_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "tests/settings/xml/is_mapped.h"
#include "tests/support/descriptors.h"
#include "tests/support/temp_dir.h"

namespace {

constexpr char kDefaultDocument[] =
    "<Agent>\n"
    "  <CurrentGateway>198.51.100.10</CurrentGateway>\n"
    "  <BackupGateway/>\n"
    "  <Interval_min>1440</Interval_min>\n"
    "  <LogLevel>2</LogLevel>\n"
    "  <DelayScope_min>0</DelayScope_min>\n"
    "  <GetGroupsFromDHCP>1</GetGroupsFromDHCP>\n"
    "  <PreAssignGroups/>\n"
    "</Agent>\n";

class SettingsFile : public testing::Test {
 protected:
  ~SettingsFile() override {
    SaveSettingsFile(0);
    EXPECT_EQ(CountDescriptors(), descriptors_before_);
    EXPECT_FALSE(IsMapped(directory_.Path()));
  }

  // Writes a file with this content and loads it.
  int Load(std::string_view content) {
    return LoadSettingsFile(directory_.Write("settings.xml", content).c_str());
  }

  std::string Content() const { return directory_.Read("settings.xml"); }

  static std::string Get(const char *path) {
    const char *text = SimpleXmlParserGet(path);
    return text == nullptr ? "none" : text;
  }

  static void Set(const char *path, const char *value) { SimpleXmlParserSet(path, strdup(value)); }

  const int descriptors_before_ = CountDescriptors();
  TempDir directory_;
};

using Ensure = SettingsFile;
using LoadFile = SettingsFile;
using GetText = SettingsFile;
using SetText = SettingsFile;
using Save = SettingsFile;

TEST_F(Ensure, WritesTheDefaultDocument) {
  const std::string path = directory_.Path("settings.xml");
  EXPECT_EQ(EnsureSettingsFile(path.c_str()), 0);
  EXPECT_EQ(Content(), kDefaultDocument);
  EXPECT_EQ(std::filesystem::file_size(path), 247U);
}

TEST_F(Ensure, LeavesAnExistingFileAlone) {
  const std::string path = directory_.Write("settings.xml", "mine");
  EXPECT_EQ(EnsureSettingsFile(path.c_str()), 0);
  EXPECT_EQ(Content(), "mine");
}

TEST_F(Ensure, LeavesAnEmptyFileAlone) {
  const std::string path = directory_.Write("settings.xml", "");
  EXPECT_EQ(EnsureSettingsFile(path.c_str()), 0);
  EXPECT_EQ(Content(), "");
}

TEST_F(Ensure, CreatesTheMissingDirectories) {
  EXPECT_EQ(EnsureSettingsFile(directory_.Path("one/two/settings.xml").c_str()), 0);
  EXPECT_EQ(directory_.Read("one/two/settings.xml"), kDefaultDocument);
}

TEST_F(Ensure, CreatesWithAllPermissionsThatTheMaskAllows) {
  for (const mode_t mask : {0027U, 0U}) {
    const std::string directory = directory_.Path(std::to_string(mask));
    const std::string file = directory + "/settings.xml";
    const mode_t old_mask = umask(mask);
    EXPECT_EQ(EnsureSettingsFile(file.c_str()), 0);
    umask(old_mask);
    struct stat status;
    ASSERT_EQ(stat(directory.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0777U & ~mask);
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0666U & ~mask);
  }
}

TEST_F(Ensure, RefusesAPathThatNamesNoFile) {
  EXPECT_EQ(EnsureSettingsFile(directory_.Path("one/").c_str()), -1);
  EXPECT_TRUE(std::filesystem::is_empty(directory_.Path()));
  EXPECT_EQ(EnsureSettingsFile("/"), -1);
}

// One byte is enough: the next load reads the file as far as it goes.
TEST_F(Ensure, SucceedsForAFileThatIsCutShort) {
  rlimit unlimited;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  for (const std::size_t size : {100U, 1U}) {
    const std::string name = std::to_string(size);
    const rlimit limited = {size, unlimited.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    EXPECT_EQ(EnsureSettingsFile(directory_.Path(name).c_str()), 0);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    EXPECT_EQ(directory_.Read(name), std::string(kDefaultDocument).substr(0, size));
  }
}

TEST_F(Ensure, TakesPathsLongerThan256Bytes) {
  std::string name = "settings.xml";
  while (name.size() < 1000) {
    name.insert(0, std::string(100, 'd') + "/");
  }
  EXPECT_EQ(EnsureSettingsFile(directory_.Path(name).c_str()), 0);
  EXPECT_EQ(directory_.Read(name), kDefaultDocument);
}

TEST_F(Ensure, RefusesAPathThatIsTooLongForTheSystem) {
  EXPECT_EQ(EnsureSettingsFile(("/" + std::string(PATH_MAX, 'x') + "/y").c_str()), -1);
}

TEST_F(Ensure, RefusesAPathThatIsNotAbsolute) {
  const std::filesystem::path old_directory = std::filesystem::current_path();
  std::filesystem::current_path(directory_.Path());
  EXPECT_EQ(EnsureSettingsFile("settings.xml"), -1);
  EXPECT_EQ(EnsureSettingsFile("./settings.xml"), -1);
  EXPECT_EQ(EnsureSettingsFile("one/settings.xml"), -1);
  EXPECT_TRUE(std::filesystem::is_empty(directory_.Path()));
  std::filesystem::current_path(old_directory);
  EXPECT_EQ(EnsureSettingsFile(""), -1);
  EXPECT_EQ(EnsureSettingsFile(nullptr), -1);
}

TEST_F(Ensure, FailsWhenAFileStandsWhereADirectoryBelongs) {
  directory_.Write("file", "");
  EXPECT_EQ(EnsureSettingsFile(directory_.Path("file/settings.xml").c_str()), -1);
  EXPECT_EQ(EnsureSettingsFile(directory_.Path("file/one/settings.xml").c_str()), -1);
}

TEST_F(Ensure, FailsWhenADirectoryStandsWhereTheFileBelongs) {
  EXPECT_EQ(EnsureSettingsFile(directory_.Path().c_str()), -1);
}

TEST_F(Ensure, FailsWhenADirectoryCannotBeMade) {
  EXPECT_EQ(EnsureSettingsFile("/proc/korv/settings.xml"), -1);
}

TEST_F(LoadFile, MakesTheDocumentReadable) {
  EXPECT_EQ(Load(kDefaultDocument), 0);
  EXPECT_EQ(Get("/Agent/Interval_min"), "1440");
}

TEST_F(LoadFile, LeavesTheFileAsItIs) {
  EXPECT_EQ(Load(" <a>  x </a>"), 0);
  EXPECT_EQ(Content(), " <a>  x </a>");
}

TEST_F(LoadFile, ReplacesTheDocumentAndThePathForSaving) {
  const std::string first = directory_.Write("first.xml", "<a>1</a>");
  ASSERT_EQ(LoadSettingsFile(first.c_str()), 0);
  ASSERT_EQ(Load("<a>2</a>"), 0);
  EXPECT_EQ(Get("/a"), "2");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(directory_.Read("first.xml"), "<a>1</a>");
  EXPECT_EQ(Content(), "<a>2</a>\n");
}

TEST_F(LoadFile, KeepsACopyOfThePath) {
  std::string path = directory_.Write("settings.xml", "<a/>");
  ASSERT_EQ(LoadSettingsFile(path.c_str()), 0);
  path.assign(path.size(), 'x');
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a/>\n");
}

TEST_F(LoadFile, AMalformedFileLeavesNoDocument) {
  ASSERT_EQ(Load("<a>1</a>"), 0);
  EXPECT_EQ(Load("<a>2</b>"), 0);
  EXPECT_EQ(Get("/a"), "none");
  Set("/a", "3");
  EXPECT_EQ(Get("/a"), "none");
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_EQ(Content(), "<a>2</b>");
  EXPECT_EQ(SaveSettingsFile(0), 0);
}

TEST_F(LoadFile, ATruncatedFileIsTakenAsFarAsItGoes) {
  EXPECT_EQ(Load("<Agent><LogLevel>2</LogL"), 0);
  EXPECT_EQ(Get("/Agent/LogLevel"), "2");
}

TEST_F(LoadFile, FailsWithoutAFile) {
  EXPECT_EQ(LoadSettingsFile(directory_.Path("missing.xml").c_str()), -1);
  EXPECT_EQ(LoadSettingsFile(directory_.Path().c_str()), -1);
  EXPECT_EQ(LoadSettingsFile(nullptr), -1);
}

TEST_F(LoadFile, FailsForAnEmptyFile) {
  EXPECT_EQ(Load(""), -1);
}

// The file is a hole, which uses no disk. It is not XML, so that only its beginning is read.
TEST_F(LoadFile, FailsForAFileThatIsTooLargeToCount) {
  const std::string path = directory_.Write("settings.xml", ">");
  std::filesystem::resize_file(path, INT32_MAX);
  EXPECT_EQ(LoadSettingsFile(path.c_str()), 0);
  std::filesystem::resize_file(path, std::uintmax_t{INT32_MAX} + 1);
  EXPECT_EQ(LoadSettingsFile(path.c_str()), -1);
}

TEST_F(LoadFile, AFailureKeepsTheDocumentAndThePath) {
  ASSERT_EQ(Load("<a>1</a>"), 0);
  EXPECT_EQ(LoadSettingsFile(directory_.Write("empty.xml", "").c_str()), -1);
  EXPECT_EQ(Get("/a"), "1");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>1</a>\n");
}

TEST_F(LoadFile, ReadsAFileThatEndsWithItsPage) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  EXPECT_EQ(Load("<a>" + std::string(page - 3, 'x')), 0);
  EXPECT_EQ(Get("/a").size(), page - 3);
}

TEST_F(GetText, FindsNothingWithoutADocument) {
  EXPECT_EQ(Get("/Agent/LogLevel"), "none");
}

TEST_F(GetText, FindsTheDefaults) {
  ASSERT_EQ(Load(kDefaultDocument), 0);
  EXPECT_EQ(Get("/Agent/CurrentGateway"), "198.51.100.10");
  EXPECT_EQ(Get("/Agent/BackupGateway"), "none");
  EXPECT_EQ(Get("/Agent/Interval_min"), "1440");
  EXPECT_EQ(Get("/Agent/LogLevel"), "2");
  EXPECT_EQ(Get("/Agent/DelayScope_min"), "0");
  EXPECT_EQ(Get("/Agent/GetGroupsFromDHCP"), "1");
  EXPECT_EQ(Get("/Agent/PreAssignGroups"), "none");
  EXPECT_EQ(Get("/Agent/Other"), "none");
}

TEST_F(GetText, GivesTheFirstTextOfTheElement) {
  ASSERT_EQ(Load("<a x='1'><b/>one<c/>two</a><d><b/></d><e x='1'/>"), 0);
  EXPECT_EQ(Get("/a"), "one");
  EXPECT_EQ(Get("/d"), "none");
  EXPECT_EQ(Get("/e"), "none");
}

TEST_F(GetText, DecodesTheFiveEntities) {
  ASSERT_EQ(Load("<a>&lt;b&gt; &amp; &apos;c&apos; &quot;d&quot; &lt;</a>"), 0);
  EXPECT_EQ(Get("/a"), "<b> & 'c' \"d\" <");
}

TEST_F(GetText, LeavesOtherEntitiesAlone) {
  ASSERT_EQ(Load("<a>&nbsp;&#65;&LT;&lt</a>"), 0);
  EXPECT_EQ(Get("/a"), "&nbsp;&#65;&LT;&lt");
}

TEST_F(GetText, DecodesTheAmpersandFirst) {
  ASSERT_EQ(Load("<a>&amp;lt;</a><b>&amp;amp;</b><c>&amp;quot;&amp;apos;&amp;gt;</c>"), 0);
  EXPECT_EQ(Get("/a"), "<");
  EXPECT_EQ(Get("/b"), "&amp;");
  EXPECT_EQ(Get("/c"), "\"'>");
}

TEST_F(GetText, KeepsTheTextDecodedInTheDocument) {
  ASSERT_EQ(Load("<a>&amp;amp;</a><b>x&lt;y</b>"), 0);
  EXPECT_EQ(Get("/a"), "&amp;");
  EXPECT_EQ(Get("/a"), "&");
  EXPECT_EQ(Get("/b"), "x<y");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>&</a>\n<b>x<y</b>\n");
}

TEST_F(GetText, GivesTheDocumentsOwnText) {
  ASSERT_EQ(Load("<a>x</a>"), 0);
  EXPECT_EQ(SimpleXmlParserGet("/a"), SimpleXmlParserGet("a"));
}

TEST_F(SetText, ReplacesTheText) {
  ASSERT_EQ(Load(kDefaultDocument), 0);
  Set("/Agent/Interval_min", "30");
  EXPECT_EQ(Get("/Agent/Interval_min"), "30");
}

TEST_F(SetText, AddsATextToAnElementWithoutNodes) {
  ASSERT_EQ(Load(kDefaultDocument), 0);
  Set("/Agent/BackupGateway", "192.0.2.1");
  EXPECT_EQ(Get("/Agent/BackupGateway"), "192.0.2.1");
  Set("/Agent/BackupGateway", "192.0.2.2");
  EXPECT_EQ(Get("/Agent/BackupGateway"), "192.0.2.2");
}

TEST_F(SetText, DoesNotChangeAnElementWithNodesButNoText) {
  ASSERT_EQ(Load("<a><b/></a><c x='1'/>"), 0);
  Set("/a", "text");
  Set("/c", "text");
  EXPECT_EQ(Get("/a"), "none");
  EXPECT_EQ(Get("/c"), "none");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>\n <b/>\n</a>\n<c x='1'/>\n");
}

TEST_F(SetText, ReplacesOnlyTheFirstText) {
  ASSERT_EQ(Load("<a>one<b/>two</a>"), 0);
  Set("/a", "three");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>three <b/>\ntwo</a>\n");
}

TEST_F(SetText, StoresTheFiveEntitiesEncoded) {
  ASSERT_EQ(Load("<a>x</a><b/>"), 0);
  Set("/a", "a<b");
  Set("/b", "<&>'\"&amp;");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>a&lt;b</a>\n<b>&lt;&amp;&gt;&apos;&quot;&amp;amp;</b>\n");
}

TEST_F(SetText, GetGivesTheCharactersBack) {
  ASSERT_EQ(Load("<a/>"), 0);
  Set("/a", "a<b & \"c\" > 'd'");
  EXPECT_EQ(Get("/a"), "a<b & \"c\" > 'd'");
}

TEST_F(SetText, AValueThatLooksEncodedComesBackDecodedOnceMore) {
  ASSERT_EQ(Load("<a/>"), 0);
  Set("/a", "&lt;");
  EXPECT_EQ(Get("/a"), "<");
}

TEST_F(SetText, AnEmptyValueIsAText) {
  ASSERT_EQ(Load("<a/><b>x</b>"), 0);
  Set("/a", "");
  Set("/b", "");
  EXPECT_EQ(Get("/a"), "");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a></a>\n<b></b>\n");
}

TEST_F(SetText, AMissingValueDoesNothing) {
  ASSERT_EQ(Load("<a>x</a>"), 0);
  SimpleXmlParserSet("/a", nullptr);
  EXPECT_EQ(Get("/a"), "x");
}

// Each of these values is freed; the leak checker finds one that is not.
TEST_F(SetText, TakesTheValueOverInEveryCase) {
  Set("/a", "no document");
  ASSERT_EQ(Load("<a><b/></a>"), 0);
  Set("/other", "no <such> element");
  Set("/a", "no <text> to replace");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>\n <b/>\n</a>\n");
}

TEST_F(Save, WritesTheDocumentFormatted) {
  ASSERT_EQ(Load("<a><b>x</b><c/></a>"), 0);
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>\n <b>x</b>\n <c/>\n</a>\n");
}

// Getting a text decodes it in the document; these could not be read again if they were saved so.
TEST_F(Save, EncodesWhatNoTextCanBeginWith) {
  const struct {
    const char *loaded;
    const char *saved;
  } cases[] = {
      {"&gt; x &gt;", "&gt; x &gt;"},
      {"/&gt;", "/&gt;"},
      {"&quot;x'", "&quot;x'"},
      {"&apos;x\"", "&apos;x\""},
      {"&quot;x&quot;", "\"x\""},
      {"&apos;x&apos;y", "'x'y"},
      {"x &gt; &quot;", "x > \""},
      {"/ &gt;", "/ >"},
      {"x/&gt;", "x/>"},
      {"=&gt;", "=>"},
  };
  for (const auto &c : cases) {
    ASSERT_EQ(Load("<a><b>" + std::string(c.loaded) + "</b></a>"), 0);
    const std::string text = Get("/a/b");
    EXPECT_EQ(SaveSettingsFile(1), 0);
    EXPECT_EQ(Content(), "<a>\n <b>" + std::string(c.saved) + "</b>\n</a>\n");
    ASSERT_EQ(LoadSettingsFile(directory_.Path("settings.xml").c_str()), 0);
    EXPECT_EQ(Get("/a/b"), text) << c.loaded;
  }
}

TEST_F(Save, EncodesItAfterWhiteSpaceToo) {
  for (const char *value : {" >", "\t>", "\n>", "\r>"}) {
    ASSERT_EQ(Load("<a/>"), 0);
    Set("/a", value);
    EXPECT_EQ(Get("/a"), value);
    EXPECT_EQ(SaveSettingsFile(1), 0);
    ASSERT_EQ(LoadSettingsFile(directory_.Path("settings.xml").c_str()), 0);
    EXPECT_EQ(Get("/a"), ">");
  }
}

TEST_F(Save, EncodesNothingElse) {
  for (const char first : {'x', '=', '/', '-', '?', '#', ';', '\v', '\xff'}) {
    const std::string text = std::string(1, first) + " > \" '";
    ASSERT_EQ(Load("<a>" + text + "</a>"), 0);
    EXPECT_EQ(SaveSettingsFile(1), 0);
    EXPECT_EQ(Content(), "<a>" + text + "</a>\n");
  }
}

TEST_F(Save, WritesADocumentOfManyPages) {
  ASSERT_EQ(Load("<a/>"), 0);
  Set("/a", std::string(100000, 'x').c_str());
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Content(), "<a>" + std::string(100000, 'x') + "</a>\n");
}

TEST_F(Save, ReleasesTheDocument) {
  ASSERT_EQ(Load("<a>x</a>"), 0);
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(Get("/a"), "none");
}

TEST_F(Save, OnlyDiscardsWithAnyFlagButOne) {
  for (const int flag : {0, 2, -1}) {
    ASSERT_EQ(Load("<a>x</a>"), 0);
    Set("/a", "y");
    EXPECT_EQ(SaveSettingsFile(flag), 0);
    EXPECT_EQ(Get("/a"), "none");
    EXPECT_EQ(Content(), "<a>x</a>");
  }
}

TEST_F(Save, DiscardingNothingSucceeds) {
  EXPECT_EQ(SaveSettingsFile(0), 0);
  EXPECT_EQ(SaveSettingsFile(0), 0);
}

TEST_F(Save, FailsWithoutADocumentBeforeTheFileIsTouched) {
  ASSERT_EQ(Load("<a>x</a>"), 0);
  EXPECT_EQ(SaveSettingsFile(0), 0);
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_EQ(Content(), "<a>x</a>");
}

TEST_F(Save, FailsForADocumentWithoutAnElementBeforeTheFileIsTouched) {
  for (const char *content : {" \n", "only text"}) {
    ASSERT_EQ(Load(content), 0);
    EXPECT_EQ(SaveSettingsFile(1), -1);
    EXPECT_EQ(Content(), content);
  }
}

TEST_F(Save, NeverCreatesTheFile) {
  ASSERT_EQ(Load("<a>x</a>"), 0);
  std::filesystem::remove(directory_.Path("settings.xml"));
  EXPECT_EQ(SaveSettingsFile(1), -1);
  EXPECT_FALSE(std::filesystem::exists(directory_.Path("settings.xml")));
  EXPECT_EQ(Get("/a"), "x");
}

// A process without standard input opens its files as descriptor 0.
TEST_F(Save, TakesDescriptorZeroLikeAnyOther) {
  const std::string path = directory_.Path("settings.xml");
  const int standard_input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  EXPECT_EQ(EnsureSettingsFile(path.c_str()), 0);
  EXPECT_EQ(LoadSettingsFile(path.c_str()), 0);
  Set("/Agent/LogLevel", "3");
  EXPECT_EQ(SaveSettingsFile(1), 0);
  EXPECT_EQ(EnsureSettingsFile(path.c_str()), 0);
  EXPECT_EQ(LoadSettingsFile(path.c_str()), 0);
  EXPECT_EQ(Get("/Agent/LogLevel"), "3");
  dup2(standard_input, STDIN_FILENO);
  close(standard_input);
}

// In a process of its own, where nothing has been loaded yet.
TEST(SaveDeathTest, FailsBeforeTheFirstLoad) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(_exit(SaveSettingsFile(1) == -1 && SaveSettingsFile(0) == 0 ? 0 : 1),
              testing::ExitedWithCode(0), "");
}

}  // namespace
