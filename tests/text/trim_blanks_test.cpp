// Blanks at the ends of a text go; all other white space stays.
#include "text/trim_blanks.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

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

TEST(TrimBlanks, TouchesNothingBesideTheText) {
  for (const std::string text : {"", " ", "x", " x "}) {
    std::string with_neighbours = " " + text + '\0' + " ";
    TrimBlanks(&with_neighbours[1]);
    EXPECT_EQ(with_neighbours.front(), ' ') << text;
    EXPECT_EQ(with_neighbours.back(), ' ') << text;
    const std::unique_ptr<char[]> alone(new char[text.size() + 1]);  // the sanitizer's to watch
    std::memcpy(alone.get(), text.c_str(), text.size() + 1);
    TrimBlanks(alone.get());
    EXPECT_STREQ(alone.get(), TrimmedBlanks(text).c_str());
  }
}

}  // namespace
