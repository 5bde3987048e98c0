// The refresh of the current gateway.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/agent_settings.h"
#include "tests/support/fake_regmux.h"

namespace {

using testing::ElementsAre;

constexpr char kGet[] = "[get][root/vexa/agent/CurrentGateway]";

class RefreshTest : public testing::Test {
 protected:
  RefreshTest() { agent_settings[CurrentGateway] = HeapText::Copy("old"); }
  ~RefreshTest() override { FreeSettings(); }
};

TEST_F(RefreshTest, TakesTheRegistrysGatewayByteForByte) {
  const FakeRegmux client(R"(printf 'value n\351w \303\251\n')");
  RefreshCurrentGateway();
  EXPECT_STREQ(agent_settings[CurrentGateway].Get(), "n\xE9w \xC3\xA9");
  EXPECT_THAT(client.Calls(), ElementsAre(kGet));
}

TEST_F(RefreshTest, TakesAnEmptyGatewayToo) {
  const FakeRegmux client("echo 'value '");
  RefreshCurrentGateway();
  EXPECT_STREQ(agent_settings[CurrentGateway].Get(), "");
}

TEST_F(RefreshTest, KeepsTheSettingWhenTheClientSaysNothing) {
  const FakeRegmux client("exit 1");
  RefreshCurrentGateway();
  EXPECT_STREQ(agent_settings[CurrentGateway].Get(), "old");
}

TEST_F(RefreshTest, AsksButLeavesTheSettingAloneWhileHeld) {
  const FakeRegmux client("echo 'value new'");
  {
    const RefreshHold outer;
    { const RefreshHold inner; }
    RefreshCurrentGateway();
  }
  EXPECT_STREQ(agent_settings[CurrentGateway].Get(), "old");
  EXPECT_THAT(client.Calls(), ElementsAre(kGet));

  RefreshCurrentGateway();
  EXPECT_STREQ(agent_settings[CurrentGateway].Get(), "new");
}

}  // namespace
