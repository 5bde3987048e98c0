// The fixed rows of the choice lists, and the number that a stored text chooses.
#include "pages/general/choices.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

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
      {"2147483647", INT_MAX},
      {"2147483648", INT_MAX},
      {"4294967296", INT_MAX},
      {"-2147483648", INT_MIN},
      {"-2147483649", INT_MIN},
      {"99999999999999999999", INT_MAX},
      {"-99999999999999999999", INT_MIN},
  };
  for (const auto &[text, number] : cases) {
    EXPECT_EQ(StoredNumber(text, 7), number) << text;
  }
}

TEST(StoredNumber, IsTheDefaultForAnAbsentTextAndNoneForAnEmptyOne) {
  EXPECT_EQ(StoredNumber(nullptr, 1440), 1440);
  EXPECT_EQ(StoredNumber("", 1440), std::nullopt);
}

void ExpectChoices(Choices choices, Choices expected) {
  ASSERT_EQ(choices.size(), expected.size());
  const Choice *choice = choices.begin();
  for (const Choice &row : expected) {
    EXPECT_EQ(choice->number, row.number);
    EXPECT_STREQ(choice->english, row.english);
    EXPECT_STREQ(choice->key, row.key);
    ++choice;
  }
}

TEST(Choices, AreThoseThatTablesInTheFieldTranslate) {
  ExpectChoices(kPullIntervals, {{0, "PullInterval_Store_Item1", "Never Pull"},
                                 {30, "PullInterval_Store_Item2", "30 minutes"},
                                 {60, "PullInterval_Store_Item3", "1 hour"},
                                 {360, "PullInterval_Store_Item4", "6 hours"},
                                 {1440, "PullInterval_Store_Item5", "1 day(recommended)"},
                                 {10080, "PullInterval_Store_Item6", "7 days"}});
  ExpectChoices(kLogLevels, {{0, "LogLevel_Store_Item1", "Error(recommended)"},
                             {1, "LogLevel_Store_Item2", "Warning"},
                             {2, "LogLevel_Store_Item3", "Information"}});
  ExpectChoices(kDelayScopes, {{0, "DelayScope_Store_Item1", "No Delay"},
                               {1, "DelayScope_Store_Item2", "1 minute"},
                               {10, "DelayScope_Store_Item3", "10 minutes"},
                               {30, "DelayScope_Store_Item4", "30 minutes"},
                               {60, "DelayScope_Store_Item5", "1 hour"}});
}

}  // namespace
