// The first characters of a UTF-8 text.
#include "text/utf8.h"

#include <gtest/gtest.h>

namespace {

TEST(FirstCharacters, CountsCharactersNotBytes) {
  EXPECT_EQ(FirstCharacters("abc", 2), "ab");
  EXPECT_EQ(FirstCharacters("\xC3\xA9\xE2\x82\xACx", 2), "\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(FirstCharacters("\xC3\xA9\xE2\x82\xACx", 3), "\xC3\xA9\xE2\x82\xACx");
  EXPECT_EQ(FirstCharacters("abc", 4), "abc");
  EXPECT_EQ(FirstCharacters("abc", 0), "");
  EXPECT_EQ(FirstCharacters("", 1), "");
}

}  // namespace
