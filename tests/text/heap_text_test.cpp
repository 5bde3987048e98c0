// The owner of heap texts: copies, moves, and absent texts.
#include "text/heap_text.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(HeapText, IsAbsentUntilATextIsPutIn) {
  HeapText text;
  EXPECT_FALSE(text);
  EXPECT_EQ(text.Get(), nullptr);
  EXPECT_STREQ(text.OrEmpty(), "");
}

TEST(HeapText, CopiesAndOwns) {
  char source[] = "gateway";
  const HeapText text = HeapText::Copy(source);
  source[0] = 'X';
  EXPECT_STREQ(text.Get(), "gateway");
}

TEST(HeapText, CopyOfNullIsAbsentAndOfEmptyIsNot) {
  EXPECT_FALSE(HeapText::Copy(nullptr));
  EXPECT_TRUE(HeapText::Copy(""));
}

TEST(HeapText, CopiesExactlyTheGivenBytes) {
  EXPECT_STREQ(HeapText::Copy(std::string_view("abcdef", 3)).Get(), "abc");
}

TEST(HeapText, AMoveLeavesTheSourceAbsent) {
  HeapText first = HeapText::Copy("a");
  HeapText second = HeapText::Copy("b");
  second = std::move(first);
  EXPECT_STREQ(second.Get(), "a");
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that is what is asked
}

TEST(HeapText, ResetFreesAndMayBeRepeated) {
  HeapText text = HeapText::Copy("a");
  text.Reset();
  text.Reset();
  EXPECT_FALSE(text);
}

}  // namespace
