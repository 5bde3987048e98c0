// Numbers of minutes as texts, in English and in a made-up language.
#include "pages/general/duration_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/utf8_locale.h"
#include "text/string_table.h"

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

struct DurationCase {
  int minutes;
  const char *text;
};

class DurationTextTest : public Utf8LocaleTest {};

TEST_F(DurationTextTest, CountsAnIntervalInDaysHoursAndMinutes) {
  const DurationCase cases[] = {
      // Up to an hour.
      {1, "1 minute"},
      {2, "2 minutes"},
      {45, "45 minutes"},
      {59, "59 minutes"},
      // Up to a day; whole hours are never singular.
      {61, "1 hour 1 minute"},
      {62, "1 hour 2 minutes"},
      {90, "1 hour 30 minutes"},
      {119, "1 hour 59 minutes"},
      {120, "2 hours"},
      {121, "2 hours 1 minute"},
      {1380, "23 hours"},
      {1439, "23 hours 59 minutes"},
      // Whole days are never singular.
      {1440, "1 days"},
      {2880, "2 days"},
      {10080, "7 days"},
      // Days with something left over.
      {1441, "1 day 1 minute"},
      {1445, "1 day 5 minutes"},
      {1500, "1 day 1 hour"},
      {1501, "1 day 1 hour 1 minute"},
      {1560, "1 day 2 hours"},
      {2881, "2 days 1 minute"},
      {2941, "2 days 1 hour 1 minute"},
      {3002, "2 days 2 hours 2 minutes"},
      {10079, "6 days 23 hours 59 minutes"},
      // An hour and everything below a minute count as days, too.
      {60, "0 days 1 hour"},
      {0, "0 days"},
      {-1, "0 days -1 minutes"},
      {-60, "0 days -1 hours"},
      {-1440, "-1 days"},
      {-1501, "-1 days -1 hours -1 minutes"},
      // Anything else that was stored.
      {100000, "69 days 10 hours 40 minutes"},
      {kHighest, "1491308 days 2 hours 7 minutes"},
      {kLowest, "-1491308 days -2 hours -8 minutes"},
  };
  for (const DurationCase &c : cases) {
    EXPECT_EQ(DurationText("interval", c.minutes), c.text) << c.minutes;
  }
}

TEST_F(DurationTextTest, CountsEveryOtherKindInMinutesAndNeverInTheSingular) {
  const DurationCase cases[] = {
      {0, "0 minutes"},
      {1, "1 minutes"},
      {5, "5 minutes"},
      {60, "60 minutes"},
      {-5, "-5 minutes"},
      {1500, "1500 minutes"},
      {kLowest, "-2147483648 minutes"},
      {kHighest, "2147483647 minutes"},
  };
  for (const char *kind : {"delayScope", "delayscope", "Interval", "interval ", ""}) {
    for (const DurationCase &c : cases) {
      EXPECT_EQ(DurationText(kind, c.minutes), c.text) << kind << " " << c.minutes;
    }
  }
}

TEST_F(DurationTextTest, TakesTheUnitWordsFromTheStringTable) {
  GlobalStringTable().sections = {{"Page_General",
                                   {{"Time_Minute", "m1"},
                                    {"Time_Minutes", "m"},
                                    {"Time_Hour", "h1"},
                                    {"Time_Hours", "h"},
                                    {"Time_Day", "d1"},
                                    {"Time_Days", "d"}}}};
  EXPECT_EQ(DurationText("interval", 1), "1 m1");
  EXPECT_EQ(DurationText("interval", 61), "1 h1 1 m1");
  EXPECT_EQ(DurationText("interval", 120), "2 h");
  EXPECT_EQ(DurationText("interval", 1501), "1 d1 1 h1 1 m1");
  EXPECT_EQ(DurationText("interval", 3002), "2 d 2 h 2 m");
  EXPECT_EQ(DurationText("interval", 1440), "1 d");
  EXPECT_EQ(DurationText("delayScope", 1), "1 m");
}

TEST_F(DurationTextTest, TakesAUnitWordAsItStandsHoweverLong) {
  const std::string word = "%s %n 100% " + std::string(5000, 'x');
  GlobalStringTable().sections = {{"Page_General", {{"Time_Days", word}, {"Time_Minutes", word}}}};
  EXPECT_EQ(DurationText("interval", 2885), "2 " + word + " 5 " + word);
  EXPECT_EQ(DurationText("delayScope", 5), "5 " + word);
}

TEST_F(DurationTextTest, IsEnglishWhereAUnitWordCannotBeShown) {
  GlobalStringTable().sections = {{"Page_General", {{"Time_Hour", "\xFF"}}}};
  EXPECT_EQ(DurationText("interval", 90), "1 hour 30 minutes");
}

}  // namespace
