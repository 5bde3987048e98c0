#include "app/hand_over.h"

#include <gtest/gtest.h>

namespace {

TEST(PidFromText, IsTheNumberAtTheStart) {
  EXPECT_EQ(PidFromText("4711\n"), 4711);
  EXPECT_EQ(PidFromText(" \t4711 and more"), 4711);
  EXPECT_EQ(PidFromText("-5"), -5);
}

TEST(PidFromText, IsZeroWithoutDigits) {
  EXPECT_EQ(PidFromText(""), 0);
  EXPECT_EQ(PidFromText("\n"), 0);
  EXPECT_EQ(PidFromText("x4711"), 0);
}

TEST(PidFromText, SaturatesAtThirtyTwoBits) {
  EXPECT_EQ(PidFromText("99999999999999999999"), 2147483647);
  EXPECT_EQ(PidFromText("-99999999999"), -2147483647 - 1);
}

}  // namespace
