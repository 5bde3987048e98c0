// Texts as they are shown: in UTF-8, in English where they cannot be, and from any bytes.
#include "text/shown_text.h"

#include <gtest/gtest.h>

#include "tests/support/utf8_locale.h"
#include "text/string_table.h"

namespace {

// Other charsets are tried on the window.
class ShownTextTest : public Utf8LocaleTest {};

TEST_F(ShownTextTest, KeepsWhatIsValid) {
  EXPECT_STREQ(ToUtf8("d\xC3\xA9lai").Get(), "d\xC3\xA9lai");
  EXPECT_STREQ(ToUtf8("").Get(), "");
}

TEST_F(ShownTextTest, GivesNullForBytesThatAreNotOfTheCharset) {
  EXPECT_FALSE(ToUtf8("d\xE9lai"));
}

TEST_F(ShownTextTest, ShownTextTakesTheTablesText) {
  GlobalStringTable().sections = {{"General", {{"Button_OK", "D'accord"}}}};
  EXPECT_STREQ(ShownText("General", "Button_OK", "OK").Get(), "D'accord");
  EXPECT_STREQ(ShownText("General", "Button_Cancel", "Cancel").Get(), "Cancel");
}

TEST_F(ShownTextTest, ShownTextIsEnglishWhereTheTablesTextHasNoUtf8Form) {
  GlobalStringTable().sections = {{"General", {{"Button_OK", "\xFF"}}}};
  EXPECT_STREQ(ShownText("General", "Button_OK", "OK").Get(), "OK");
}

TEST_F(ShownTextTest, ShowableBytesReplacesWhatIsNotUtf8) {
  EXPECT_STREQ(ShowableBytes("d\xC3\xA9lai").Get(), "d\xC3\xA9lai");
  EXPECT_STREQ(ShowableBytes("d\xE9lai\xC3").Get(), "d\xEF\xBF\xBDlai\xEF\xBF\xBD");
  EXPECT_STREQ(ShowableBytes("").Get(), "");
}

}  // namespace
