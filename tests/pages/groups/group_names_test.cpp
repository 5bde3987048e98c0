// The names of groups: what a typed one stands for, and which ones are offered.
#include "pages/groups/group_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

TEST(ToUpperAscii, ChangesNothingButLowerCaseAscii) {
  std::string text = "azAZ`{09 \xC3\xA9\xE4";
  ToUpperAscii(text);
  EXPECT_EQ(text, "AZAZ`{09 \xC3\xA9\xE4");
}

TEST(UpperName, LosesItsOuterBlanksOnly) {
  EXPECT_EQ(UpperName("  sales team "), "SALES TEAM");
  EXPECT_EQ(UpperName("\tsales\t"), "\tSALES\t");
  EXPECT_EQ(UpperName("   "), "");
}

TEST(RowName, FoldsTheSpellingsOfTheManualGroup) {
  EXPECT_EQ(RowName("MG"), "Manual Group");
  EXPECT_EQ(RowName("MANUAL GROUP"), "Manual Group");
  for (const char *name : {"MG1", "MANUALGROUP", "MANUAL  GROUP", "P1", "mg", ""}) {
    EXPECT_EQ(RowName(name), name);
  }
}

TEST(FindRow, FindsTheFirstOfExactlyThatName) {
  const std::vector<GroupRow> rows = {{"a", "1"}, {"A", "2"}, {"A", "3"}};
  EXPECT_EQ(FindRow(rows, "A"), 1U);
  EXPECT_EQ(FindRow(rows, "a"), 0U);
  EXPECT_EQ(FindRow(rows, "B"), std::nullopt);
}

TEST(NameChoices, AreTheWellKnownOnesAndThenTheListsOwn) {
  EXPECT_THAT(NameChoices({}), ElementsAre("Manual Group", "P1", "P2", "P3", "P4", "P5", "P6"));
  EXPECT_THAT(NameChoices({{"ZOO", ""}, {"P3", ""}, {"Manual Group", ""}, {"p3", ""}, {"A", ""}}),
              ElementsAre("Manual Group", "P1", "P2", "P3", "P4", "P5", "P6", "ZOO", "p3", "A"));
  EXPECT_THAT(NameChoices({{"A", "1"}, {"A", "2"}}),
              ElementsAre("Manual Group", "P1", "P2", "P3", "P4", "P5", "P6", "A", "A"));
}

}  // namespace
