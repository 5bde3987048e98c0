// The string table: its syntax, look-ups, and which file a locale finds.
#include "text/string_table.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <string_view>

#include "tests/support/descriptors.h"
#include "tests/support/temp_dir.h"

namespace {

// What a file of that content says for a section and key, "(english)" when it says nothing.
class StringTableTest : public testing::Test {
 protected:
  ~StringTableTest() override {
    GlobalStringTable() = StringTable();
    std::setlocale(LC_ALL, "C");  // LoadStringTable takes the environment's
    EXPECT_EQ(CountDescriptors(), descriptors_before_);
  }

  bool Parse(std::string_view content) {
    return ParsePropFile(GlobalStringTable(), directory_.Write("table.prop", content));
  }
  static std::string Lookup(const char *section, const char *key) {
    return LookupText(section, key, "(english)").Get();
  }
  std::string Value(std::string_view content, const char *section = "Message",
                    const char *key = "k") {
    EXPECT_TRUE(Parse(content));
    return Lookup(section, key);
  }

  const int descriptors_before_ = CountDescriptors();
  TempDir directory_;
};

TEST_F(StringTableTest, FindsAKeyInItsSection) {
  EXPECT_EQ(Value("[Message]\nk=text\n"), "text");
  EXPECT_EQ(Lookup("General", "k"), "(english)");
  EXPECT_EQ(Lookup("Message", "other"), "(english)");
}

TEST_F(StringTableTest, SectionsAndKeysAreCaseSensitive) {
  ASSERT_TRUE(Parse("[Message]\nk=text\n"));
  EXPECT_EQ(Lookup("message", "k"), "(english)");
  EXPECT_EQ(Lookup("Message", "K"), "(english)");
}

TEST_F(StringTableTest, SectionsAndKeysAreComparedWhole) {
  EXPECT_EQ(Value("[Message2]\nk=1\n[Mess]\nk=2\n[Message]\nk2=3\nk=text\n"), "text");
  EXPECT_EQ(Lookup("Message2", "k2"), "(english)");
}

TEST_F(StringTableTest, TheFirstOfTwoEqualKeysWins) {
  EXPECT_EQ(Value("[Message]\nk=one\nk=two\n"), "one");
}

TEST_F(StringTableTest, LaterSectionsOfTheSameNameAreSearchedToo) {
  EXPECT_EQ(Value("[Message]\nx=1\n[General]\ny=2\n[Message]\nk=text\n"), "text");
}

TEST_F(StringTableTest, RepeatedSectionsAreNotMerged) {
  ASSERT_TRUE(Parse("[A]\n[A]\n"));
  EXPECT_EQ(GlobalStringTable().sections.size(), 2U);
}

TEST_F(StringTableTest, KeysBeforeTheFirstHeaderAreNeverFound) {
  EXPECT_EQ(Value("k=early\n[Message]\n"), "(english)");
  EXPECT_EQ(Lookup("", "k"), "(english)");
}

TEST_F(StringTableTest, BlanksAroundKeyAndValueAreDropped) {
  EXPECT_EQ(Value("[ MainWindow ]\n \tTitle = a value \r\n", "MainWindow", "Title"), "a value");
}

TEST_F(StringTableTest, AByteOrderMarkIsDroppedOnce) {
  EXPECT_EQ(Value("\xEF\xBB\xBF[MainWindow]\nTitle=x\n", "MainWindow", "Title"), "x");
  EXPECT_EQ(Value("\xEF\xBB\xBF\xEF\xBB\xBF[MainWindow]\nTitle=x\n", "MainWindow", "Title"),
            "(english)");
  EXPECT_EQ(Value("\n\xEF\xBB\xBF[MainWindow]\nTitle=x\n", "MainWindow", "Title"), "(english)");
}

TEST_F(StringTableTest, OnlyTheFirstColumnMakesAComment) {
  EXPECT_EQ(Value("[Message]\n#k=hidden\n", "Message", "#k"), "(english)");
  EXPECT_EQ(Value("[Message]\n #k=shown\n", "Message", "#k"), "shown");
}

TEST_F(StringTableTest, TheLastBracketEndsAHeader) {
  EXPECT_EQ(Value("[Message] trailing]\nk=text\n", "Message] trailing"), "text");
  EXPECT_EQ(Value("[Message] ignored\nk=text\n"), "text");
}

TEST_F(StringTableTest, AHeaderWithoutAClosingBracketMakesNoSection) {
  EXPECT_EQ(Value("[Message]\n[General\nk=text\n"), "text");
  EXPECT_EQ(Value("[General\nk=text\n"), "(english)");
}

TEST_F(StringTableTest, AHeaderMayBeEmpty) {
  EXPECT_EQ(Value("[]\nk=text\n", ""), "text");
}

TEST_F(StringTableTest, OnlyTheFirstEqualsSignSplits) {
  EXPECT_EQ(Value("[Message]\nk=a=b==c\n"), "a=b==c");
}

TEST_F(StringTableTest, AKeyMayBeEmptyAndALineWithoutEqualsIsSkipped) {
  EXPECT_EQ(Value("[Message]\n=text\n", "Message", ""), "text");
  EXPECT_EQ(Value("[Message]\nk\nk=text\n"), "text");
}

TEST_F(StringTableTest, AnEmptyValueNeedsItsLineEnd) {
  EXPECT_EQ(Value("[Message]\nk=\n"), "");
  EXPECT_EQ(Value("[Message]\nk="), "(english)");
  EXPECT_EQ(Value("[Message]\nk=x"), "x");
}

TEST_F(StringTableTest, ANulEndsTheTextOfALine) {
  EXPECT_EQ(Value(std::string_view("[Message]\nk=a\0b\nk2=c\n", 21)), "a");
  EXPECT_EQ(Lookup("Message", "k2"), "c");
}

TEST_F(StringTableTest, EscapesLeaveTheTextAsLongAsItWas) {
  EXPECT_EQ(Value("[Message]\nk=x\\ny\n"), "x\nyy");
  EXPECT_EQ(Value("[Message]\nk=a\\tb\n"), "a\tbb");
  EXPECT_EQ(Value("[Message]\nk=\\\"\\'\\\\\\r\n"), "\"'\\\r\\\\\\r");
}

TEST_F(StringTableTest, OtherBackslashesStayAsTheyStand) {
  EXPECT_EQ(Value("[Message]\nk=a\\qb\\\n"), "a\\qb\\");
  EXPECT_EQ(Value("[Message]\nk=\\q\\n\n"), "\\q\nn");
}

TEST_F(StringTableTest, ALineOf1022BytesIsReadWhole) {
  const std::string value(1022 - 2 - 1, 'v');  // "k=", value, line feed
  EXPECT_EQ(Value("[Message]\nk=" + value + "\nk2=next\n"), value);
  EXPECT_EQ(Lookup("Message", "k2"), "next");
}

TEST_F(StringTableTest, ALongerLineIsReadAsSeveral) {
  const std::string value(1022 - 2, 'v');  // fills the read: the line feed begins the next one
  EXPECT_EQ(Value("[Message]\nk=" + value + "\nk2=next\n"), value);
  EXPECT_EQ(Lookup("Message", "k2"), "next");
  EXPECT_EQ(Value("[Message]\nk=" + value + "cut=off\n"), value);
  EXPECT_EQ(Lookup("Message", "cut"), "off");
}

TEST_F(StringTableTest, ParsingReplacesWhatWasThere) {
  ASSERT_TRUE(Parse("[Message]\nk=old\n"));
  EXPECT_EQ(Value("[Message]\nother=new\n"), "(english)");
  EXPECT_TRUE(GlobalStringTable().loaded);
}

TEST_F(StringTableTest, AFileThatCannotBeOpenedEmptiesTheTable) {
  ASSERT_TRUE(Parse("[Message]\nk=old\n"));
  EXPECT_FALSE(ParsePropFile(GlobalStringTable(), directory_.Path("missing.prop")));
  EXPECT_EQ(Lookup("Message", "k"), "(english)");
  EXPECT_FALSE(GlobalStringTable().loaded);
}

TEST_F(StringTableTest, AnEmptyPathLeavesTheTableAlone) {
  ASSERT_TRUE(Parse("[Message]\nk=old\n"));
  EXPECT_FALSE(ParsePropFile(GlobalStringTable(), ""));
  EXPECT_EQ(Lookup("Message", "k"), "old");
}

TEST_F(StringTableTest, ADirectoryAnEmptyFileAndBinaryGarbageGiveNoTexts) {
  EXPECT_TRUE(ParsePropFile(GlobalStringTable(), directory_.Path()));
  EXPECT_TRUE(GlobalStringTable().sections.empty());
  EXPECT_TRUE(Parse(""));
  EXPECT_TRUE(GlobalStringTable().sections.empty());
  std::string garbage;
  for (int i = 0; i < 100000; ++i) {
    garbage.push_back(static_cast<char>(i * 7919 >> 3));
  }
  EXPECT_TRUE(Parse(garbage));
  EXPECT_EQ(Lookup("Message", "k"), "(english)");
}

TEST(TrimSpace, RemovesWhiteSpaceAtBothEnds) {
  for (const auto &[text, expected] : {std::pair<std::string, std::string>{" \t\r\n\v\f", ""},
                                       {"", ""},
                                       {" a b\r\n", "a b"},
                                       {"\xC3\xA9 ", "\xC3\xA9"}}) {
    std::string buffer = text;
    TrimSpace(buffer.data());
    EXPECT_STREQ(buffer.c_str(), expected.c_str());
  }
}

TEST_F(StringTableTest, StaysEmptyWhenTheLocaleToolCannotBeStarted) {
  const NoDescriptorsLeft fault;
  LoadStringTable();
  EXPECT_EQ(Lookup("General", "Button_OK"), "(english)");
}

TEST_F(StringTableTest, LeavesNothingOpenOfTheLocaleTool) {
  LoadStringTable();
}

TEST(LocaleNameFromLine, IsWhatStandsBetweenTheQuotes) {
  EXPECT_EQ(LocaleNameFromLine("LC_CTYPE=\"zh_CN.UTF-8\"\n"), "zh_CN.UTF-8");
  EXPECT_EQ(LocaleNameFromLine("LC_CTYPE=\"a\"b\"\n"), "a\"b");
  EXPECT_EQ(LocaleNameFromLine("LC_CTYPE=\"\"\n"), "");
}

TEST(LocaleNameFromLine, OddLines) {
  EXPECT_EQ(LocaleNameFromLine(""), "en_US");
  EXPECT_EQ(LocaleNameFromLine("LC_CTYPE=de_DE.UTF-8\n"), "LC_CTYPE=de_DE.UTF-8\n");
  EXPECT_EQ(LocaleNameFromLine("LC_CTYPE=\"de_DE\n"), "de_DE\n");
}

// Which of the files in the directory a locale's texts come from.
class LocaleFiles : public testing::Test {
 protected:
  LocaleFiles() { table_.directory = directory_.Path("."); }

  void Install(std::string_view name) {
    directory_.Write(std::string(name) + ".prop", "[" + std::string(name) + "]\n");
  }
  std::string LoadedFor(const std::string &locale) {
    LoadLocaleTexts(table_, locale);
    return table_.sections.empty() ? "(none)" : table_.sections[0].name;
  }

  TempDir directory_;
  StringTable table_;
};

TEST_F(LocaleFiles, TheLocalesOwnFileComesFirst) {
  Install("zh_CN.UTF-8");
  Install("en_US");
  EXPECT_EQ(LoadedFor("zh_CN.UTF-8"), "zh_CN.UTF-8");
}

TEST_F(LocaleFiles, AUtf8LocaleFallsToEnglishNotToItsPlainName) {
  Install("zh_CN");
  EXPECT_EQ(LoadedFor("zh_CN.UTF-8"), "(none)");
  Install("en_US");
  EXPECT_EQ(LoadedFor("zh_CN.UTF-8"), "en_US");
  EXPECT_EQ(LoadedFor("zh_CN.UTF-8@variant"), "en_US");
}

TEST_F(LocaleFiles, AnotherCharsetFallsToThePlainNameNotToEnglish) {
  Install("en_US");
  EXPECT_EQ(LoadedFor("zh_CN.GB18030"), "(none)");
  Install("zh_CN");
  EXPECT_EQ(LoadedFor("zh_CN.GB18030"), "zh_CN");
  EXPECT_EQ(LoadedFor("zh_CN.utf-8"), "zh_CN");
}

TEST_F(LocaleFiles, OnlyTheLastDotBeginsTheCharset) {
  Install("en_US");
  Install("x.UTF-8");
  EXPECT_EQ(LoadedFor("x.UTF-8.GB18030"), "x.UTF-8");
}

TEST_F(LocaleFiles, WithoutADotThereIsNoFallback) {
  Install("en_US");
  EXPECT_EQ(LoadedFor("de_DE"), "(none)");
}

TEST_F(LocaleFiles, AnUnquotedLocaleLineStillFindsItsFallback) {
  Install("en_US");
  EXPECT_EQ(LoadedFor(LocaleNameFromLine("LC_CTYPE=de_DE.UTF-8\n")), "en_US");
}

TEST(GlobalStringTable, GivesEveryTextItsEnglishFormWhenNothingIsLoaded) {
  EXPECT_STREQ(LookupText("General", "Button_OK", "OK").Get(), "OK");
}

}  // namespace
