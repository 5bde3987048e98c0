// What the Groups page and its dialog decide: which groups count, and what is refused.
#include "pages/groups/group_rules.h"

#include <gtest/gtest.h>

namespace {

TEST(WantsDhcpGroups, AbsentAndEmptyDoAndAnyOtherTextByItsNumber) {
  for (const char *setting : {"1", "2", "-1", "+1", " 1", "1x", "99999999999999999999"}) {
    EXPECT_TRUE(WantsDhcpGroups(setting)) << setting;
  }
  EXPECT_TRUE(WantsDhcpGroups(nullptr));
  EXPECT_TRUE(WantsDhcpGroups(""));
  for (const char *setting : {"0", "00", "-0", "abc", " ", "x1", "0x1"}) {
    EXPECT_FALSE(WantsDhcpGroups(setting)) << setting;
  }
}

const std::vector<GroupRow> kRows = {
    {"Manual Group", "m"}, {"P1", "1"}, {"SALES", "s"}, {"lower", "l"}};

struct CheckCase {
  GroupInput input;
  GroupFault fault;
};

void ExpectFaults(const std::vector<CheckCase> &cases) {
  for (const CheckCase &example : cases) {
    bool duplicate_found = false;
    EXPECT_EQ(CheckGroup(example.input, kRows, duplicate_found), example.fault)
        << example.input.name << " / " << example.input.value << " / "
        << example.input.edited_name.value_or("(adding)");
    EXPECT_EQ(duplicate_found, example.fault == GroupFault::kDuplicate);
  }
}

GroupInput Adding(const std::string &name, const std::string &value) {
  return {name, value, std::nullopt};
}

GroupInput Editing(const std::string &row, const std::string &name, const std::string &value) {
  return {name, value, row};
}

TEST(CheckGroup, TheNameMustNotBeEmpty) {
  ExpectFaults({{Adding("", "x"), GroupFault::kNameEmpty},
                {Adding("   ", "x"), GroupFault::kNameEmpty},
                {Adding("\t", "x"), GroupFault::kNone},
                {Editing("P1", " ", "x"), GroupFault::kNameEmpty}});
}

TEST(CheckGroup, TheNameRefusesFiveCharacters) {
  for (const char character : std::string("^=;\\\"")) {
    ExpectFaults({{Adding(std::string("A") + character + "B", "x"), GroupFault::kNameCharacter},
                  {Editing("P1", std::string(1, character), "x"), GroupFault::kNameCharacter}});
  }
  for (const char character : std::string("/&<>*?|:.,-_+()[]{}!@#$%~`\t")) {
    ExpectFaults({{Adding(std::string("A") + character + "B", "x"), GroupFault::kNone}});
  }
}

TEST(CheckGroup, TheValueMustNotBeEmpty) {
  ExpectFaults({{Adding("A", ""), GroupFault::kValueEmpty},
                {Adding("A", "   "), GroupFault::kValueEmpty},
                {Adding("A", "\t"), GroupFault::kNone},
                {Adding("mg", ""), GroupFault::kValueEmpty},
                {Editing("P1", "P1", " "), GroupFault::kValueEmpty},
                {Adding("A", " x "), GroupFault::kNone}});
}

TEST(CheckGroup, AValueRefusesTwelveCharacters) {
  for (const char character : std::string("=;\"\\<>*?|:&/")) {
    const std::string value = std::string("a") + character + "b";
    ExpectFaults({{Adding("A", value), GroupFault::kValueCharacter},
                  {Editing("P1", "P1", value), GroupFault::kValueCharacter}});
  }
  for (const char character : std::string("^.,-_+()[]{}!@#$%~`\t")) {
    ExpectFaults({{Adding("A", std::string("a") + character + "b"), GroupFault::kNone}});
  }
}

TEST(CheckGroup, TheManualGroupsValueMayHoldASlash) {
  const std::vector<GroupRow> no_rows;
  bool duplicate_found = false;
  for (const char *name : {"mg", "Mg", "MG", " mg ", "manual group", "Manual Group"}) {
    for (const char character : std::string("=;\"\\<>*?|:&")) {
      EXPECT_EQ(CheckGroup(Adding(name, std::string(1, character)), no_rows, duplicate_found),
                GroupFault::kManualValueCharacter);
    }
    EXPECT_EQ(CheckGroup(Adding(name, "a/b"), no_rows, duplicate_found), GroupFault::kNone);
  }
  EXPECT_EQ(CheckGroup(Adding("MG1", "a/b"), no_rows, duplicate_found),
            GroupFault::kValueCharacter);
}

TEST(CheckGroup, WhileTheManualGroupIsEditedItsRulesHoldForAnyName) {
  ExpectFaults({{Editing("Manual Group", "P2", "a/b"), GroupFault::kNone},
                {Editing("Manual Group", "P2", "a:b"), GroupFault::kManualValueCharacter},
                {Editing("P1", "P2", "a/b"), GroupFault::kValueCharacter},
                {Editing("P1", "mg", "a:b"), GroupFault::kManualValueCharacter}});
}

TEST(CheckGroup, AListedNameIsADuplicateInAnyLetterCase) {
  ExpectFaults({{Adding("P1", "x"), GroupFault::kDuplicate},
                {Adding(" p1 ", "x"), GroupFault::kDuplicate},
                {Adding("sales", "x"), GroupFault::kDuplicate},
                {Adding("mg", "x"), GroupFault::kDuplicate},
                {Adding("MANUAL group", "x"), GroupFault::kDuplicate},
                {Adding("P2", "x"), GroupFault::kNone},
                {Adding("SALE", "x"), GroupFault::kNone}});
}

TEST(CheckGroup, ARowInLowerCaseIsNobodysDuplicate) {
  ExpectFaults({{Adding("lower", "x"), GroupFault::kNone},
                {Editing("lower", "lower", "x"), GroupFault::kNone}});
}

TEST(CheckGroup, AnEditedRowMayKeepItsNameButTakeNoOther) {
  ExpectFaults({{Editing("P1", "P1", "x"), GroupFault::kNone},
                {Editing("P1", "p1", "x"), GroupFault::kNone},
                {Editing("P1", "P2", "x"), GroupFault::kNone},
                {Editing("P1", "sales", "x"), GroupFault::kDuplicate},
                {Editing("P1", "mg", "x"), GroupFault::kDuplicate},
                {Editing("Manual Group", "Manual Group", "x"), GroupFault::kNone},
                {Editing("Manual Group", "manual GROUP", "x"), GroupFault::kNone},
                {Editing("Manual Group", "P1", "x"), GroupFault::kDuplicate}});
}

TEST(CheckGroup, TheShortSpellingIsADuplicateOfTheManualGroupItself) {
  ExpectFaults({{Editing("Manual Group", "MG", "x"), GroupFault::kDuplicate},
                {Editing("Manual Group", "mg", "x"), GroupFault::kDuplicate}});
}

TEST(CheckGroup, StopsAtTheFirstFault) {
  ExpectFaults({{Adding(" ", ""), GroupFault::kNameEmpty},
                {Adding("=", ""), GroupFault::kNameCharacter},
                {Adding("P1", ""), GroupFault::kValueEmpty},
                {Adding("P1", "a:b"), GroupFault::kValueCharacter},
                {Adding("mg", "a:b"), GroupFault::kManualValueCharacter},
                {Adding("P1", "x"), GroupFault::kDuplicate}});
}

TEST(CheckGroup, OnlyTheSearchForADuplicateTouchesWhatItFound) {
  const GroupInput before_the_search[] = {Adding("", "x"),
                                          Adding("=", "x"),
                                          Adding("P2", ""),
                                          Adding("P2", ":"),
                                          Editing("P1", "P1", "x"),
                                          Editing("P1", "P1", ":"),
                                          Editing("Manual Group", "manual group", "x")};
  for (const GroupInput &input : before_the_search) {
    for (const bool found_before : {false, true}) {
      bool duplicate_found = found_before;
      CheckGroup(input, kRows, duplicate_found);
      EXPECT_EQ(duplicate_found, found_before) << input.name << " / " << input.value;
    }
  }
  bool duplicate_found = true;
  CheckGroup(Adding("P2", "x"), kRows, duplicate_found);
  EXPECT_FALSE(duplicate_found);
}

TEST(VerdictOf, BlamesTheNameOrTheValue) {
  EXPECT_EQ(VerdictOf(GroupFault::kNone), 1);
  for (const GroupFault fault :
       {GroupFault::kValueEmpty, GroupFault::kManualValueCharacter, GroupFault::kValueCharacter}) {
    EXPECT_EQ(VerdictOf(fault), 0);
  }
  for (const GroupFault fault :
       {GroupFault::kNameEmpty, GroupFault::kNameCharacter, GroupFault::kDuplicate}) {
    EXPECT_EQ(VerdictOf(fault), -1);
  }
}

}  // namespace
