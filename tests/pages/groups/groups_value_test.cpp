// The stored text of the groups: which rows it stands for, and how rows are stored.
#include "pages/groups/groups_value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/pages/groups/group_row_matchers.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Formatted(const std::vector<GroupRow> &rows) {
  return FormatGroups(rows).OrEmpty();
}

std::string WrittenBack(const std::string &stored) {
  return Formatted(ParseGroups(stored.c_str()));
}

TEST(ParseGroups, ReadsTheRowsInTheirOrder) {
  EXPECT_THAT(ParseGroups("MG=\"floor2\";P1=\"lab\";SALES=\"north\""),
              ElementsAre(Row("Manual Group", "floor2"), Row("P1", "lab"), Row("SALES", "north")));
}

TEST(ParseGroups, AnEmptyTextHasNoRows) {
  EXPECT_THAT(ParseGroups(""), IsEmpty());
}

TEST(ParseGroups, SkipsEmptyEntries) {
  EXPECT_THAT(ParseGroups(";;;"), IsEmpty());
  EXPECT_THAT(ParseGroups(";;A=\"1\";"), ElementsAre(Row("A", "1")));
  EXPECT_THAT(ParseGroups("A=\"1\";;;B=\"2\";;"), ElementsAre(Row("A", "1"), Row("B", "2")));
}

TEST(ParseGroups, AnEmptyValueMakesARow) {
  EXPECT_THAT(ParseGroups("A=\"\""), ElementsAre(Row("A", "")));
}

TEST(ParseGroups, NamesThatBeginWithMgAreTheManualGroup) {
  for (const char *stored : {"MG=\"x\"", "MGROUP=\"x\"", "MGX=\"x\"", "MG2=\"x\""}) {
    EXPECT_THAT(ParseGroups(stored), ElementsAre(Row("Manual Group", "x"))) << stored;
  }
  EXPECT_THAT(ParseGroups("mg=\"x\";Mg=\"y\";M=\"z\";AMG=\"w\""),
              ElementsAre(Row("mg", "x"), Row("Mg", "y"), Row("M", "z"), Row("AMG", "w")));
}

TEST(ParseGroups, TheFirstEqualsSignEndsTheName) {
  EXPECT_THAT(ParseGroups("A=\"b=c=\""), ElementsAre(Row("A", "b=c=")));
}

TEST(ParseGroups, QuotesInsideAValueSurvive) {
  EXPECT_THAT(ParseGroups("A=\"x\"y\""), ElementsAre(Row("A", "x\"y")));
}

TEST(ParseGroups, WhateverStandsWhereTheQuotesBelongIsDropped) {
  EXPECT_THAT(ParseGroups("A=(x);B=xyz"), ElementsAre(Row("A", "x"), Row("B", "y")));
}

TEST(ParseGroups, ASemicolonEndsAnEntryAlsoBetweenQuotes) {
  EXPECT_THAT(ParseGroups("A=\"x;y\""), ElementsAre(Row("A", "")));
}

TEST(ParseGroups, SkipsWhatIsNoEntry) {
  for (const char *stored : {"A", "A=", "A=\"", "=", "=\"", "\"\"", " "}) {
    EXPECT_THAT(ParseGroups(stored), IsEmpty()) << stored;
  }
  EXPECT_THAT(ParseGroups("A=\";B=\"2\";C"), ElementsAre(Row("B", "2")));
}

TEST(ParseGroups, TakesNamesAndValuesAsTheyAre) {
  EXPECT_THAT(ParseGroups(" a b =\" x \";=\"no name\""),
              ElementsAre(Row(" a b ", " x "), Row("", "no name")));
  EXPECT_THAT(ParseGroups("\xFF\xE4=\"\xC3\""), ElementsAre(Row("\xFF\xE4", "\xC3")));
}

struct CutCase {
  std::string name;
  std::size_t kept;  // bytes
};

TEST(GroupNames, AreCutAtFiftyBytesButNeverInsideACharacter) {
  const std::string two = "\xC3\xA9";           // e with an acute accent
  const std::string three = "\xE2\x82\xAC";     // the euro sign
  const std::string four = "\xF0\x9F\x98\x80";  // a face
  const std::vector<CutCase> cases = {
      {std::string(49, 'A'), 49},
      {std::string(50, 'A'), 50},
      {std::string(51, 'A'), 50},
      {std::string(300, 'A'), 50},
      {std::string(48, 'A') + two + "B", 50},
      {std::string(49, 'A') + two + "B", 49},
      {std::string(47, 'A') + three + "B", 50},
      {std::string(48, 'A') + three + "B", 48},
      {std::string(49, 'A') + three + "B", 49},
      {std::string(46, 'A') + four + "B", 50},
      {std::string(47, 'A') + four + "B", 47},
      {std::string(48, 'A') + four + "B", 48},
      {std::string(49, 'A') + four + "B", 49},
      {std::string(60, '\xA9'), 47},  // not one character, but still a name
  };
  for (const CutCase &example : cases) {
    const std::string kept = example.name.substr(0, example.kept);
    EXPECT_THAT(ParseGroups((example.name + "=\"the value\"").c_str()),
                ElementsAre(Row(kept, "the value")));
    EXPECT_EQ(Formatted({{example.name, "the value"}}), kept + "=\"the value\"");
  }
}

TEST(FormatGroups, WritesTheRowsInTheirOrder) {
  EXPECT_EQ(Formatted({{"Manual Group", "floor2"}, {"P1", "lab"}, {"SALES", "north"}}),
            "MG=\"floor2\";P1=\"lab\";SALES=\"north\"");
}

TEST(FormatGroups, NoRowsAreAnAbsentText) {
  EXPECT_FALSE(FormatGroups({}));
}

TEST(FormatGroups, OnlyTheExactNameIsTheManualGroup) {
  EXPECT_EQ(Formatted({{"MANUAL GROUP", "x"}, {"manual group", "y"}, {"Manual Group ", "z"}}),
            "MANUAL GROUP=\"x\";manual group=\"y\";Manual Group =\"z\"");
}

TEST(FormatGroups, WritesValuesAsTheyAre) {
  EXPECT_EQ(Formatted({{"A", ""}, {"b", " x "}, {"", "y"}}), "A=\"\";b=\" x \";=\"y\"");
}

struct RewriteCase {
  const char *stored;
  const char *written_back;
};

TEST(GroupsValue, WhatIsReadIsWrittenBack) {
  const RewriteCase cases[] = {
      {";;A=\"1\";", "A=\"1\""},          {"A=\"\"", "A=\"\""},
      {"MG=\"x\"", "MG=\"x\""},           {"MGROUP=\"x\"", "MG=\"x\""},
      {"Manual Group=\"x\"", "MG=\"x\""}, {"mg=\"x\"", "mg=\"x\""},
      {"A=\"b=c\"", "A=\"b=c\""},         {"A=\"x\"y\"", "A=\"x\"y\""},
      {"A=\"it's\"", "A=\"it's\""},
  };
  for (const RewriteCase &example : cases) {
    EXPECT_EQ(WrittenBack(example.stored), example.written_back);
  }
}

// Random bytes, rich in those that the format is made of.
std::string RandomText(std::mt19937 &random) {
  const std::string special = ";=\"MG";
  std::string text(random() % 200, ' ');
  for (char &byte : text) {
    byte = random() % 2 == 0 ? special[random() % special.size()]
                             : static_cast<char>(1 + random() % 255);
  }
  return text;
}

TEST(GroupsValue, AnyTextReadsTheSameOnceItWasWrittenBack) {
  std::mt19937 random(20260131);
  for (int i = 0; i < 5000; ++i) {
    const std::string stored = RandomText(random);
    EXPECT_EQ(WrittenBack(WrittenBack(stored)), WrittenBack(stored)) << stored;
    EXPECT_EQ(ParseGroups(WrittenBack(stored).c_str()), ParseGroups(stored.c_str())) << stored;
  }
}

}  // namespace
