#include "text/to_utf8.h"

#include <gtest/gtest.h>

#include "tests/support/utf8_locale.h"
#include "text/string_table.h"

namespace {

// Other charsets are tried on the window.
class ToUtf8Test : public Utf8LocaleTest {};

TEST_F(ToUtf8Test, KeepsWhatIsValid) {
  EXPECT_STREQ(ToUtf8("d\xC3\xA9lai").Get(), "d\xC3\xA9lai");
  EXPECT_STREQ(ToUtf8("").Get(), "");
}

TEST_F(ToUtf8Test, GivesNullForBytesThatAreNotOfTheCharset) {
  EXPECT_FALSE(ToUtf8("d\xE9lai"));
}

TEST_F(ToUtf8Test, ShownTextTakesTheTablesText) {
  ProcessStringTable().sections = {{"General", {{"Button_OK", "D'accord"}}}};
  EXPECT_STREQ(ShownText("OK", "Button_OK", "General").Get(), "D'accord");
  EXPECT_STREQ(ShownText("Cancel", "Button_Cancel", "General").Get(), "Cancel");
}

TEST_F(ToUtf8Test, ShownTextIsEmptyWhereThereIsNoUtf8Form) {
  ProcessStringTable().sections = {{"General", {{"Button_OK", "\xFF"}}}};
  EXPECT_STREQ(ShownText("OK", "Button_OK", "General").Get(), "");
}

TEST_F(ToUtf8Test, ShowableBytesReplacesWhatIsNoUtf8) {
  EXPECT_STREQ(ShowableBytes("d\xC3\xA9lai").Get(), "d\xC3\xA9lai");
  EXPECT_STREQ(ShowableBytes("d\xE9lai\xC3").Get(), "d\xEF\xBF\xBDlai\xEF\xBF\xBD");
  EXPECT_STREQ(ShowableBytes("").Get(), "");
}

}  // namespace
