// The registry client: the commands that it runs, and what it makes of their output.
#include "settings/registry_client.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <string>
#include <vector>

#include "tests/support/descriptors.h"
#include "tests/support/fake_regmux.h"

namespace {

using Calls = std::vector<std::string>;

QString Text(const char *text) {
  return QString::fromLatin1(text, static_cast<int>(strlen(text)));
}

// What GetValue makes of a client whose output printf writes for `format`.
struct Got {
  bool found;
  std::string value;
  bool operator==(const Got &other) const { return found == other.found && value == other.value; }
};
void PrintTo(const Got &got, std::ostream *out) {
  *out << got.found << " \"" << got.value << '"';
}

Got GetFrom(const std::string &format) {
  const FakeRegmux regmux("printf '" + format + "'");
  QString value = Text("untouched");
  const bool found = RegistryClient().GetValue(Text("root/key"), value);
  return {found, value.toLatin1().constData()};
}

TEST(GetValue, IsWhatFollowsTheWordAndABlank) {
  EXPECT_EQ(GetFrom("value 1440\\n"), (Got{true, "1440"}));
  EXPECT_EQ(GetFrom("value 1440"), (Got{true, "1440"}));
  EXPECT_EQ(GetFrom("value=1440\\n"), (Got{true, "1440"}));
  EXPECT_EQ(GetFrom("key name\\n"), (Got{true, "name"}));
  EXPECT_EQ(GetFrom("dir name\\n"), (Got{true, "name"}));
}

TEST(GetValue, DropsAnyRunOfLineEndsAndNothingElse) {
  EXPECT_EQ(GetFrom("value 1440\\r\\n"), (Got{true, "1440"}));
  EXPECT_EQ(GetFrom("value 1440\\r\\r\\r\\n"), (Got{true, "1440"}));
  EXPECT_EQ(GetFrom("value  a \\t\\n"), (Got{true, " a \t"}));
}

TEST(GetValue, AWordWithNothingAfterItIsAnEmptyValue) {
  EXPECT_EQ(GetFrom("value \\n"), (Got{true, ""}));
  EXPECT_EQ(GetFrom("value\\n"), (Got{true, ""}));
  EXPECT_EQ(GetFrom("value"), (Got{true, ""}));
  EXPECT_EQ(GetFrom("key"), (Got{true, ""}));
}

TEST(GetValue, NoOutputLeavesTheCallersTextAlone) {
  EXPECT_EQ(GetFrom(""), (Got{false, "untouched"}));
}

TEST(GetValue, AClientThatCannotBeStartedLeavesTheCallersTextAlone) {
  const FakeRegmux regmux("echo value 1");
  QString value = Text("untouched");
  const NoDescriptorsLeft fault;
  EXPECT_FALSE(RegistryClient().GetValue(Text("root/key"), value));
  EXPECT_EQ(value, Text("untouched"));
}

TEST(GetValue, TakesTheFirstLineOfWhateverKind) {
  EXPECT_EQ(GetFrom("garbage\\nvalue 1\\n"), (Got{true, ""}));
  EXPECT_EQ(GetFrom("dir sub\\nvalue 1\\n"), (Got{true, "sub"}));
  EXPECT_EQ(GetFrom("\\nvalue 1\\n"), (Got{true, ""}));
}

TEST(GetValue, ANulEndsTheLine) {
  EXPECT_EQ(GetFrom("value a\\000b\\n"), (Got{true, "a"}));
}

TEST(GetValue, BytesComeThroughUnchanged) {
  std::string all;
  std::string octal;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '\n') {
      all.push_back(static_cast<char>(byte));
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned>(byte));
      octal += escape;
    }
  }
  EXPECT_EQ(GetFrom("value x" + octal + "x\\n"), (Got{true, "x" + all + "x"}));
}

TEST(GetValue, ALineOfTenMegabytesIsReadWhole) {
  const FakeRegmux regmux("printf 'value '; head -c 10000000 /dev/zero | tr '\\0' a");
  QString value;
  ASSERT_TRUE(RegistryClient().GetValue(Text("root/key"), value));
  EXPECT_EQ(value.size(), 10000000);
}

TEST(GetValue, WhatTheClientComplainsOfIsAnEmptyValue) {
  const FakeRegmux regmux("echo 'no such entry' >&2; exit 1");
  QString value = Text("untouched");
  EXPECT_TRUE(RegistryClient().GetValue(Text("root/key"), value));
  EXPECT_TRUE(value.isEmpty());
}

TEST(GetValue, AMissingClientGivesAnEmptyValue) {
  const ScopedEnv path("PATH", "/nowhere");
  QString value = Text("untouched");
  EXPECT_TRUE(RegistryClient().GetValue(Text("root/key"), value));
  EXPECT_TRUE(value.isEmpty());
}

TEST(GetEntries, TellsTheKindOfEachLine) {
  const FakeRegmux regmux("printf 'key a\\ndir b\\nvalue c\\nother d\\nkeyboard\\nKEY e\\n'");
  std::vector<std::pair<int, std::string>> entries;
  for (const RegistryEntry &entry : RegistryClient().GetEntries(Text("root"))) {
    entries.emplace_back(entry.kind, entry.text.toLatin1().constData());
  }
  EXPECT_EQ(entries, (std::vector<std::pair<int, std::string>>{
                         {0, "a"}, {1, "b"}, {2, "c"}, {-1, ""}, {0, "oard"}, {-1, ""}}));
}

TEST(GetIntValue, ReadsDecimalTextAndTakesOtherTextForZero) {
  for (const auto &[line, expected] :
       {std::pair<const char *, int>{"1440", 1440}, {"-5", -5}, {"abc", 0}, {"0x1E", 0}, {"", 0}}) {
    const FakeRegmux regmux(std::string("printf 'value ") + line + "\\n'");
    int value = 99;
    EXPECT_TRUE(RegistryClient().GetIntValue(Text("root/key"), value));
    EXPECT_EQ(value, expected) << line;
  }
  const FakeRegmux regmux("");
  int value = 99;
  EXPECT_FALSE(RegistryClient().GetIntValue(Text("root/key"), value));
  EXPECT_EQ(value, 99);
}

TEST(SetValue, CreatesThenSetsEveryTime) {
  const FakeRegmux regmux("exit 0");
  EXPECT_TRUE(RegistryClient().SetValue(Text("root/key"), Text("a b")));
  EXPECT_EQ(regmux.Calls(), (Calls{"[create][root/key]", "[set][root/key][a b]"}));
}

TEST(SetValue, OnlyTheSetCounts) {
  const FakeRegmux create_fails("[ $1 != create ]");
  EXPECT_TRUE(RegistryClient().SetValue(Text("root/key"), Text("x")));
  const FakeRegmux set_fails("[ $1 != set ]");
  EXPECT_FALSE(RegistryClient().SetValue(Text("root/key"), Text("x")));
  EXPECT_EQ(set_fails.Calls().size(), 2U);
}

TEST(SetValue, AnEmptyValueIsPassedAsAnEmptyArgument) {
  const FakeRegmux regmux("exit 0");
  EXPECT_TRUE(RegistryClient().SetValue(Text("root/key"), QString()));
  EXPECT_EQ(regmux.Calls().back(), "[set][root/key][]");
}

TEST(SetValue, TheShellSeesNothingToExpandInAValue) {
  const FakeRegmux regmux("exit 0");
  RegistryClient().SetValue(Text("root/key"), Text("$HOME `id` \"x\" \\ ; & | *"));
  EXPECT_EQ(regmux.Calls().back(), "[set][root/key][$HOME `id` \"x\" \\ ; & | *]");
}

TEST(SetValue, BytesComeThroughAndWiderCharactersBecomeQuestionMarks) {
  const FakeRegmux regmux("exit 0");
  RegistryClient().SetValue(Text("root/key"), Text("d\xC3\xA9lai \xFF"));
  EXPECT_EQ(regmux.Calls().back(), "[set][root/key][d\xC3\xA9lai \xFF]");
  RegistryClient().SetValue(Text("root/key"), QString(QChar(0x4E2D)) + Text("!"));
  EXPECT_EQ(regmux.Calls().back(), "[set][root/key][?!]");
}

TEST(SetIntValue, WritesDecimal) {
  const FakeRegmux regmux("exit 0");
  EXPECT_TRUE(RegistryClient().SetIntValue(Text("root/key"), -1440));
  EXPECT_EQ(regmux.Calls(), (Calls{"[create][root/key]", "[set][root/key][-1440]"}));
}

TEST(TheOtherOperations, AreOneCommandEachAndTellItsStatus) {
  const FakeRegmux regmux("exit 0");
  EXPECT_TRUE(RegistryClient().DeleteKey(Text("root/key")));
  EXPECT_TRUE(RegistryClient().Commit());
  EXPECT_TRUE(RegistryClient().Apply());
  EXPECT_EQ(regmux.Calls(), (Calls{"[delete][root/key]", "[commit]", "[apply]"}));
  const FakeRegmux failing("exit 1");
  EXPECT_FALSE(RegistryClient().DeleteKey(Text("root/key")));
  EXPECT_FALSE(RegistryClient().Commit());
  EXPECT_FALSE(RegistryClient().Apply());
}

TEST(TheOtherOperations, FailWithoutAClient) {
  const ScopedEnv path("PATH", "/nowhere");
  testing::internal::CaptureStderr();  // the shell's complaint
  EXPECT_FALSE(RegistryClient().SetValue(Text("root/key"), Text("x")));
  EXPECT_FALSE(RegistryClient().Commit());
  testing::internal::GetCapturedStderr();
}

}  // namespace
