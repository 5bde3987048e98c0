// The list of groups, filled from its setting and stored there again.
#include "pages/groups/group_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/agent_settings.h"
#include "tests/pages/groups/group_row_matchers.h"
#include "tests/support/fake_regmux.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class GroupListTest : public testing::Test {
 protected:
  GroupListTest() { CreateGroupList(); }
  ~GroupListTest() override {
    g_object_unref(GroupList());
    FreeSettings();
  }

  static void Store(const char *text) { agent_settings[PreAssignGroups] = HeapText::Copy(text); }
  static const char *Stored() { return agent_settings[PreAssignGroups].Get(); }
};

TEST_F(GroupListTest, IsFilledFromTheSettingWhichStaysAsItIs) {
  Store(";;MGX=\"x\";b=\"\xFF\";");
  ParseGroupsValue();
  EXPECT_THAT(GroupRows(), ElementsAre(Row("Manual Group", "x"), Row("b", "\xFF")));
  EXPECT_STREQ(Stored(), ";;MGX=\"x\";b=\"\xFF\";");
}

TEST_F(GroupListTest, StaysEmptyWithoutTheSetting) {
  ParseGroupsValue();
  EXPECT_THAT(GroupRows(), IsEmpty());
}

TEST_F(GroupListTest, BecomesTheSetting) {
  Store("an old text, longer than what takes its place");
  AppendGroup({"Manual Group", "x"});
  AppendGroup({"P1", " y "});
  BuildGroupsValue();
  EXPECT_STREQ(Stored(), "MG=\"x\";P1=\" y \"");
}

TEST_F(GroupListTest, AnEmptyListLeavesTheSettingAbsent) {
  Store("A=\"1\"");
  BuildGroupsValue();
  EXPECT_EQ(Stored(), nullptr);
}

TEST_F(GroupListTest, RowsAreReplacedAndRemovedWhereTheyStand) {
  Store("A=\"1\";B=\"2\";C=\"3\"");
  ParseGroupsValue();
  ReplaceGroup(1, {"Manual Group", "4"});
  RemoveGroup(0);
  EXPECT_THAT(GroupRows(), ElementsAre(Row("Manual Group", "4"), Row("C", "3")));
}

TEST_F(GroupListTest, NamesAreCutWhenStoredAndNotInTheList) {
  AppendGroup({std::string(60, 'A'), "x"});
  BuildGroupsValue();
  EXPECT_EQ(Stored(), std::string(50, 'A') + "=\"x\"");
  EXPECT_THAT(GroupRows(), ElementsAre(Row(std::string(60, 'A'), "x")));
}

// The longest groups text that the registry's client takes: what its command line has room for.
constexpr std::size_t kLongestText = 4046;

std::string GroupsOfLength(std::size_t length) {
  const std::string name = "A=\"";
  return name + std::string(length - name.size() - 1, 'x') + "\"";
}

TEST_F(GroupListTest, ATextOfTheGreatestLengthIsSavedWhole) {
  const FakeRegmux regmux("exit 0");
  const std::string text = GroupsOfLength(kLongestText);
  Store(text.c_str());
  SaveSettings();
  EXPECT_THAT(regmux.Calls(), Contains("[set][root/vexa/agent/PreAssignGroups][" + text + "]"));
}

TEST_F(GroupListTest, AByteMoreIsNotSavedAndDoesNotStopTheCommit) {
  const FakeRegmux regmux("exit 0");
  Store(GroupsOfLength(kLongestText + 1).c_str());
  testing::internal::CaptureStderr();  // the shell complains of the open quote
  SaveSettings();
  testing::internal::GetCapturedStderr();
  EXPECT_THAT(regmux.Calls(), Not(Contains(StartsWith("[set][root/vexa/agent/PreAssignGroups]"))));
  EXPECT_THAT(regmux.Calls().back(), EndsWith("[commit]"));
}

}  // namespace
