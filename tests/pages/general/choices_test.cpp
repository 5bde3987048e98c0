#include "pages/general/choices.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/utf8_locale.h"
#include "text/string_table.h"

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

TEST(StoredNumber, IsWhatTheTextBeginsWith) {
  const std::pair<const char *, int> cases[] = {
      {"1440", 1440},
      {"0", 0},
      {"-5", -5},
      {"+5", 5},
      {" 5", 5},
      {"5 min", 5},
      {"010", 10},
      {"0x1E", 0},
      {"abc", 0},
      {" ", 0},
      {"2147483647", kHighest},
      {"2147483648", kHighest},
      {"4294967296", kHighest},
      {"-2147483648", kLowest},
      {"-2147483649", kLowest},
      {"99999999999999999999", kHighest},
      {"-99999999999999999999", kLowest},
  };
  for (const auto &[text, number] : cases) {
    EXPECT_EQ(StoredNumber(text, 7), number) << text;
  }
}

TEST(StoredNumber, IsTheDefaultForAnAbsentTextAndNoneForAnEmptyOne) {
  EXPECT_EQ(StoredNumber(nullptr, 1440), 1440);
  EXPECT_EQ(StoredNumber("", 1440), std::nullopt);
}

TEST(NamesRow, ByTheRowsTextOrItsValue) {
  EXPECT_TRUE(NamesRow("30 minutes", "30 minutes", 30));
  EXPECT_TRUE(NamesRow("30", "30 minutes", 30));
  EXPECT_TRUE(NamesRow("-5", "-5 minutes", -5));
  for (const char *typed :
       {"30 Minutes", "30 minute", "30 minutes!", "030", "+30", "30.0", " 30"}) {
    EXPECT_FALSE(NamesRow(typed, "30 minutes", 30)) << typed;
  }
}

// Else OK would read a number out of the text, and save that.
TEST(NamesRow, KnowsATextThatItsEntryCannotGiveBackWhole) {
  const std::string e_acute = "\xC3\xA9";
  std::string fifty;
  for (int i = 0; i < 50; ++i) {
    fifty += e_acute;
  }
  EXPECT_TRUE(NamesRow(fifty, fifty.c_str(), 30));
  EXPECT_TRUE(NamesRow(fifty, (fifty + e_acute).c_str(), 30));
  EXPECT_TRUE(NamesRow("1 hour 30", "1 hour 30 ", 90));
  EXPECT_FALSE(NamesRow(fifty.substr(2), fifty.c_str(), 30));
  EXPECT_FALSE(NamesRow(fifty + e_acute, fifty.c_str(), 30));
}

class ChoiceTextTest : public Utf8LocaleTest {};

TEST_F(ChoiceTextTest, IsTheTranslation) {
  ProcessStringTable().sections = {{"Message", {{"Time_Day", "no"}}},
                                   {"Page_General", {{"Time_Day", "jour n\xC2\xB0"}}}};
  EXPECT_STREQ(ChoiceText("day", "Time_Day").Get(), "jour n\xC2\xB0");
  EXPECT_STREQ(ChoiceText("days", "Time_Days").Get(), "days");
}

TEST_F(ChoiceTextTest, IsEnglishWhereTheTranslationCannotBeShown) {
  ProcessStringTable().sections = {{"Page_General", {{"Time_Day", "d\xE9j\xE0"}}}};
  EXPECT_STREQ(ChoiceText("day", "Time_Day").Get(), "day");
}

template <std::size_t size>
void ExpectChoices(const Choice (&choices)[size], std::initializer_list<Choice> expected) {
  ASSERT_EQ(size, expected.size());
  const Choice *choice = choices;
  for (const Choice &row : expected) {
    EXPECT_EQ(choice->value, row.value);
    EXPECT_STREQ(choice->english, row.english);
    EXPECT_STREQ(choice->key, row.key);
    ++choice;
  }
}

TEST(Choices, AreThoseThatTablesInTheFieldTranslate) {
  ExpectChoices(kPullIntervals, {{0, "Never Pull", "PullInterval_Store_Item1"},
                                 {30, "30 minutes", "PullInterval_Store_Item2"},
                                 {60, "1 hour", "PullInterval_Store_Item3"},
                                 {360, "6 hours", "PullInterval_Store_Item4"},
                                 {1440, "1 day(recommended)", "PullInterval_Store_Item5"},
                                 {10080, "7 days", "PullInterval_Store_Item6"}});
  ExpectChoices(kLogLevels, {{0, "Error(recommended)", "LogLevel_Store_Item1"},
                             {1, "Warning", "LogLevel_Store_Item2"},
                             {2, "Information", "LogLevel_Store_Item3"}});
  ExpectChoices(kDelayScopes, {{0, "No Delay", "DelayScope_Store_Item1"},
                               {1, "1 minute", "DelayScope_Store_Item2"},
                               {10, "10 minutes", "DelayScope_Store_Item3"},
                               {30, "30 minutes", "DelayScope_Store_Item4"},
                               {60, "1 hour", "DelayScope_Store_Item5"}});
}

}  // namespace
