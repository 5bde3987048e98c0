// Blanks at the ends of a text go; all other white space stays.
#include "text/trim_blanks.h"

#include <gtest/gtest.h>

namespace {

TEST(TrimBlanks, RemovesBlanksAtBothEnds) {
  EXPECT_EQ(TrimmedBlanks("  1440  "), "1440");
  EXPECT_EQ(TrimmedBlanks("a  b"), "a  b");
  EXPECT_EQ(TrimmedBlanks(" a"), "a");
  EXPECT_EQ(TrimmedBlanks("a "), "a");
}

TEST(TrimBlanks, LeavesTabsAndLineEndsAlone) {
  EXPECT_EQ(TrimmedBlanks(" \t1440 "), "\t1440");
  EXPECT_EQ(TrimmedBlanks("5.2.1 \n"), "5.2.1 \n");
}

TEST(TrimBlanks, OnlyBlanksBecomeEmpty) {
  EXPECT_EQ(TrimmedBlanks("    "), "");
  EXPECT_EQ(TrimmedBlanks(""), "");
}

TEST(TrimBlanks, WorksInPlaceAndAllowsNull) {
  char text[] = "  x ";
  TrimBlanks(text);
  EXPECT_STREQ(text, "x");
  TrimBlanks(nullptr);
}

}  // namespace
