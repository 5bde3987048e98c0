// The seven settings: read, filled, saved and freed, with a stand-in for the client.
#include "settings/agent_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_regmux.h"

namespace {

using Texts = std::vector<std::string>;

class AgentSettingsTest : public testing::Test {
 protected:
  ~AgentSettingsTest() override { FreeSettings(); }

  static Texts Working() {
    Texts texts;
    for (const HeapText &text : agent_settings.texts) {
      texts.emplace_back(text ? text.Get() : "(absent)");
    }
    return texts;
  }
};

// A client that answers each get with the last part of the key.
constexpr char kEcho[] = "[ $1 != get ] || printf 'value %s\\n' \"of ${2##*/}\"";

TEST_F(AgentSettingsTest, AreReadInOrder) {
  const FakeRegmux regmux(kEcho);
  LoadSettings();
  EXPECT_EQ(
      regmux.Calls(),
      (Texts{"[get][root/vexa/agent/CurrentGateway]", "[get][root/vexa/agent/BackupGateway]",
             "[get][root/vexa/agent/Interval_min]", "[get][root/vexa/agent/LogLevel]",
             "[get][root/vexa/agent/DelayScope_min]", "[get][root/vexa/agent/GetGroupsFromDHCP]",
             "[get][root/vexa/agent/PreAssignGroups]"}));
  EXPECT_EQ(Working(),
            (Texts{"of CurrentGateway", "of BackupGateway", "of Interval_min", "of LogLevel",
                   "of DelayScope_min", "of GetGroupsFromDHCP", "of PreAssignGroups"}));
}

TEST_F(AgentSettingsTest, WhatCannotBeReadIsEmptyAndTakesNoDefault) {
  for (const char *script : {"", "echo 'no such entry' >&2; exit 1", "echo garbage"}) {
    const FakeRegmux regmux(script);
    LoadSettings();
    EXPECT_EQ(Working(), Texts(7, "")) << script;
  }
}

TEST_F(AgentSettingsTest, OneThatCannotBeReadDoesNotTakeItsNeighboursValue) {
  const FakeRegmux regmux("case $2 in */LogLevel) ;; *) echo value 1;; esac");
  LoadSettings();
  EXPECT_EQ(Working(), (Texts{"1", "1", "1", "", "1", "1", "1"}));
}

TEST_F(AgentSettingsTest, DefaultsApplyToAbsentTextsOnly) {
  AgentSettings settings;
  FillSettings(settings, SettingTexts());
  EXPECT_FALSE(settings[CurrentGateway]);
  EXPECT_FALSE(settings[BackupGateway]);
  EXPECT_STREQ(settings[Interval_min].Get(), "1440");
  EXPECT_STREQ(settings[LogLevel].Get(), "0");
  EXPECT_STREQ(settings[DelayScope_min].Get(), "0");
  EXPECT_STREQ(settings[GetGroupsFromDHCP].Get(), "1");
  EXPECT_FALSE(settings[PreAssignGroups]);
}

TEST_F(AgentSettingsTest, AreSavedInOrderWithOneCommit) {
  const FakeRegmux regmux(kEcho);
  for (std::size_t i = 0; i < kSettingCount; ++i) {
    agent_settings.texts[i] = HeapText::Copy(std::to_string(i).c_str());
  }
  SaveSettings();
  Texts expected;
  int number = 0;
  for (const char *name : {"CurrentGateway", "BackupGateway", "Interval_min", "LogLevel",
                           "DelayScope_min", "GetGroupsFromDHCP", "PreAssignGroups"}) {
    const std::string key = std::string("[root/vexa/agent/") + name + "]";
    expected.push_back("[create]" + key);
    expected.push_back("[set]" + key + "[" + std::to_string(number++) + "]");
  }
  expected.emplace_back("[commit]");
  EXPECT_EQ(regmux.Calls(), expected);
}

TEST_F(AgentSettingsTest, AnAbsentTextIsSavedAsAnEmptyOne) {
  const FakeRegmux regmux("exit 0");
  FreeSettings();
  SaveSettings();
  EXPECT_EQ(regmux.Calls()[13], "[set][root/vexa/agent/PreAssignGroups][]");
}

TEST_F(AgentSettingsTest, FailuresStopNothing) {
  const FakeRegmux regmux("exit 1");
  SaveSettings();
  EXPECT_EQ(regmux.Calls().size(), 15U);
}

TEST_F(AgentSettingsTest, ATextWithASingleQuoteIsLeftOutAndNeverRuns) {
  const FakeRegmux regmux("exit 0");
  const std::string trap = regmux.Directory().Path("trap");
  agent_settings[BackupGateway] = HeapText::Copy(("'$(touch " + trap + ")'").c_str());
  SaveSettings();
  const Texts calls = regmux.Calls();
  ASSERT_EQ(calls.size(), 13U);
  EXPECT_EQ(calls[2], "[create][root/vexa/agent/Interval_min]");
  EXPECT_EQ(calls.back(), "[commit]");
  EXPECT_EQ(std::fopen(trap.c_str(), "r"), nullptr);
}

TEST_F(AgentSettingsTest, BytesAreWrittenBackAsTheyWereRead) {
  const std::string bytes = "d\xC3\xA9lai \xFF\x01 \"$x\"";
  const FakeRegmux regmux("[ $1 != get ] || printf 'value %s\\n' '" + bytes + "'");
  LoadSettings();
  EXPECT_EQ(agent_settings[PreAssignGroups].OrEmpty(), bytes);
  SaveSettings();
  EXPECT_EQ(regmux.Calls()[20], "[set][root/vexa/agent/PreAssignGroups][" + bytes + "]");
}

}  // namespace
