// The number that a text begins with.
#include "text/leading_number.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(LeadingNumber, IsDecimalAndSaturates) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  const std::pair<const char *, int> cases[] = {
      {"1440", 1440},
      {"-5", -5},
      {"+5", 5},
      {"\t 5 min", 5},
      {"010", 10},
      {"0x1E", 0},
      {"abc", 0},
      {"", 0},
      {"2147483647", kHighest},
      {"2147483648", kHighest},
      {"-2147483648", kLowest},
      {"-2147483649", kLowest},
      {"99999999999999999999", kHighest},
      {"-99999999999999999999", kLowest},
  };
  for (const auto &[text, number] : cases) {
    EXPECT_EQ(LeadingNumber(text), number) << text;
  }
}

}  // namespace
