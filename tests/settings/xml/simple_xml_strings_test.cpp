// Copies of texts and replacements in them.
#include <gtest/gtest.h>

#include <string>

#include "settings/xml/simple_xml.h"
#include "tests/settings/xml/xml_support.h"

namespace {

std::string Copied(const char *text, int32_t count) {
  return XmlText(SimpleStrdup(text, count)).get();
}

// "none" stands for null.
std::string Replaced(const char *old_text, const char *find_text, const char *replace_text) {
  const XmlText text(strrep(old_text, find_text, replace_text));
  return text == nullptr ? "none" : text.get();
}

TEST(SimpleStrdup, CopiesTheFirstCharacters) {
  EXPECT_EQ(Copied("abc", 2), "ab");
  EXPECT_EQ(Copied("abc", 3), "abc");
}

TEST(SimpleStrdup, ALengthOfZeroMeansTheWholeText) {
  EXPECT_EQ(Copied("abc", 0), "abc");
  EXPECT_EQ(Copied("", 0), "");
}

TEST(SimpleStrdup, ReadsNeitherPastTheLengthNorPastTheText) {
  const GuardedText unterminated("abc");
  EXPECT_EQ(Copied(unterminated.Get(), 3), "abc");
  EXPECT_EQ(Copied("abc", 1000), "abc");
}

TEST(strrep, ReplacesEveryOccurrence) {
  EXPECT_EQ(Replaced("a&b&c", "&", "&amp;"), "a&amp;b&amp;c");
  EXPECT_EQ(Replaced("&", "&", "&amp;"), "&amp;");
  EXPECT_EQ(Replaced("&lt;x&lt;", "&lt;", "<"), "<x<");
  EXPECT_EQ(Replaced("abc", "b", ""), "ac");
  EXPECT_EQ(Replaced("abab", "ab", ""), "");
  EXPECT_EQ(Replaced("aba", "a", "a"), "aba");
}

TEST(strrep, OccurrencesDoNotOverlap) {
  EXPECT_EQ(Replaced("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Replaced("aaaa", "aa", "aaa"), "aaaaaa");
}

TEST(strrep, GivesNoneWithoutAnOccurrence) {
  EXPECT_EQ(Replaced("abc", "x", "y"), "none");
  EXPECT_EQ(Replaced("", "x", "y"), "none");
  EXPECT_EQ(Replaced("ab", "abc", "y"), "none");
}

TEST(strrep, GivesNoneForAnEmptyTextToFind) {
  EXPECT_EQ(Replaced("abc", "", "y"), "none");
  EXPECT_EQ(Replaced("", "", "y"), "none");
}

TEST(strrep, LeavesTheOldTextToItsOwner) {
  const std::string old_text = "a&b";
  EXPECT_EQ(Replaced(old_text.c_str(), "&", "&amp;"), "a&amp;b");
  EXPECT_EQ(old_text, "a&b");
}

TEST(TextDeathTest, NamesTheParameterAtFault) {
  EXPECT_STOPS(SimpleStrdup("abc", -1), "textCount >= 0");
  EXPECT_STOPS(SimpleStrdup(nullptr, 0), "text");
  EXPECT_STOPS(strrep(nullptr, "a", "b"), "oldText");
  EXPECT_STOPS(strrep("a", nullptr, "b"), "findText");
  EXPECT_STOPS(strrep("a", "a", nullptr), "replaceText");
}

}  // namespace
