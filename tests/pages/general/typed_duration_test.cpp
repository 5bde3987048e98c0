// What typed intervals and delays mean, and which rows they name.
#include "pages/general/typed_duration.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr DurationFault kFormat = DurationFault::kFormat;
constexpr DurationFault kRange = DurationFault::kRange;

struct Expected {
  Expected(int value) : fault(DurationFault::kNone), minutes(value) {}
  Expected(DurationFault kind) : fault(kind), minutes(0) {}
  DurationFault fault;
  int minutes;
};

struct TypedCase {
  const char *text;
  Expected interval;
  Expected delay;
};

void ExpectTyped(const TypedDuration &typed, const Expected &expected, const TypedCase &c,
                 const char *what) {
  EXPECT_EQ(typed.fault, expected.fault) << what << " '" << c.text << "'";
  EXPECT_EQ(typed.minutes, expected.minutes) << what << " '" << c.text << "'";
}

void ExpectAll(std::initializer_list<TypedCase> cases) {
  for (const TypedCase &c : cases) {
    ExpectTyped(ParseTypedInterval(c.text), c.interval, c, "interval");
    ExpectTyped(ParseTypedDelay(c.text), c.delay, c, "delay");
  }
}

TEST(TypedDuration, HasAnUpperLimit) {
  ExpectAll({
      {"0", 0, 0},
      {"45", 45, 45},
      {"60", 60, 60},
      {"61", 61, kRange},
      {"10080", 10080, kRange},
      {"10081", kRange, kRange},
  });
}

TEST(TypedDuration, MustBeginLikeANumber) {
  ExpectAll({
      {"abc", kFormat, kFormat},
      {"-5", kFormat, kFormat},
      {".5", kFormat, kFormat},
      {"+", kFormat, kFormat},
      {"+abc", kFormat, kFormat},
      {"\t5", kFormat, kFormat},  // only blanks are trimmed
      {"\xC2\xA0"
       "5",
       kFormat, kFormat},                  // a no-break space
      {"\xEF\xBC\x95", kFormat, kFormat},  // a full-width 5
      {"\xFF", kFormat, kFormat},
      {"", kFormat, kFormat},
      {"  ", kFormat, kFormat},
  });
}

TEST(TypedDuration, OfAnIntervalIsReadFromTheStartOfTheEntryAndThatOfADelayAfterTheSign) {
  ExpectAll({
      {"+30", 3, 30},
      {"+5", kFormat, 5},  // "+" is left
      {" 45", 4, 45},
      {"  45", kFormat, 45},
      {" 45 ", 4, 45},
      {"45  ", 45, 45},
      {" +45", kFormat, 45},     // " +"
      {" +450", 4, kRange},      // " +4"
      {"  45\xC3\xA9", 45, 45},  // four bytes are left, the letter has two
      {"+-5", kFormat, -5},
      {"++5", kFormat, 5},
      {"+ 5", kFormat, 5},
      {"+0x1E", 1, 30},  // "+0x1"
  });
}

TEST(TypedDuration, KnowsHexadecimalAndOctalNumbers) {
  ExpectAll({
      {"0x1E", 30, 30},
      {"0X1e", 30, 30},
      {"010", 8, 8},
      {"0x", 0, 0},
      {"0xg", 0, 0},
      {"08", 0, 0},
      {"0017", 15, 15},
      {"0b11", 0, 0},  // no binary, whatever the C library knows
      {"0B11", 0, 0},
      {"+-0x10", kFormat, -16},
      {"+-010", kFormat, -8},
      {"+ 0x10", kFormat, 16},
      {"+\t010", kFormat, 8},
  });
}

TEST(TypedDuration, IgnoresWhatFollowsTheNumber) {
  ExpectAll({
      {"30 min", 30, 30},
      {"30min", 30, 30},
      {"30,9", 30, 30},
      {"1e3", 1, 1},
      {"12 34", 12, 12},
      {"5-", 5, 5},
      {"30 \xFF", 30, 30},
  });
}

TEST(TypedDuration, IsRoundedOnOneDecimal) {
  ExpectAll({
      {"59.4", 59, 59},
      {"59.49", 59, 59},
      {"59.5", 60, 60},
      {"59.9", 60, 60},
      {"59.", 59, 59},
      {"59.x", 59, 59},
      {"59.:", 59, 59},  // the byte after "9"
      {"59 .9", 59, 59},
      {"60.7", 61, kRange},
      {"10080.4", 10080, kRange},
      {"10080.7", kRange, kRange},
      {"0x1E.9", 31, 31},
      {"0.5", 1, 1},
      {"+-5.7", kFormat, -4},
  });
}

TEST(TypedDuration, MustFitAnInteger) {
  ExpectAll({
      {"4294967296", kRange, kRange},  // 0 in 32 bits
      {"4294967326", kRange, kRange},  // 30
      {"18446744073709551646", kRange, kRange},
      {"9223372036854775807", kRange, kRange},
      {"9223372036854775807.9", kRange, kRange},
      {"99999999999999999999999999999999999999999999999999", kRange, kRange},
      {"0xFFFFFFFFFFFFFFFFFFFFFFFF", kRange, kRange},
      {"+-2147483648", kFormat, -2147483647 - 1},
      {"+-2147483649", kFormat, kRange},
      {"+-4294967266", kFormat, kRange},
      {"+-9223372036854775808", kFormat, kRange},
      {"+-9223372036854775808.9", kFormat, kRange},
      {"+-99999999999999999999999999999999999999999999999", kFormat, kRange},
  });
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

// Otherwise OK would read a number out of the text, and save that.
TEST(NamesRow, KnowsATextThatItsEntryCannotGiveBackWhole) {
  const std::string e_acute = "\xC3\xA9";
  std::string fifty;
  for (int i = 0; i < 50; ++i) {
    fifty += e_acute;
  }
  EXPECT_TRUE(NamesRow(fifty, fifty.c_str(), 30));
  EXPECT_TRUE(NamesRow(fifty, (fifty + e_acute).c_str(), 30));
  EXPECT_TRUE(NamesRow("1 hour 30", "1 hour 30 ", 90));
  EXPECT_TRUE(
      NamesRow(std::string(49, 'x'), " " + std::string(60, 'x'), 30));  // the entry shows " x..."
  EXPECT_FALSE(NamesRow(fifty.substr(2), fifty.c_str(), 30));
  EXPECT_FALSE(NamesRow(fifty + e_acute, fifty.c_str(), 30));
}

}  // namespace
