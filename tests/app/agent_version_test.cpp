// What a line of the agent's output says about its version, and an agent that cannot be asked.
#include "app/agent_version.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "tests/support/descriptors.h"
#include "tests/support/scoped_env.h"

namespace {

TEST(VersionFromLine, IsWhatFollowsTheFirstColon) {
  EXPECT_EQ(VersionFromLine("Agent Version : 5.2.1"), "5.2.1");
  EXPECT_EQ(VersionFromLine("a:b:c"), "b:c");
  EXPECT_EQ(VersionFromLine("Version:"), "");
}

TEST(VersionFromLine, IsTheWholeLineWithoutAColon) {
  EXPECT_EQ(VersionFromLine("  5.2.1  "), "5.2.1");
  EXPECT_EQ(VersionFromLine(""), "");
}

TEST(VersionFromLine, KeepsTheLineEndAndWhatStandsBeforeIt) {
  EXPECT_EQ(VersionFromLine("v: 5.2.1 \n"), "5.2.1 \n");
  EXPECT_EQ(VersionFromLine("\t5.2.1\r\n"), "\t5.2.1\r\n");
}

TEST(QueryAgentVersion, AnAgentThatCannotBeStartedHasNoVersion) {
  const ScopedEnv library_path("LD_LIBRARY_PATH", std::nullopt);
  const NoDescriptorsLeft fault;
  QueryAgentVersion();
  EXPECT_FALSE(agent_version);
  EXPECT_STREQ(std::getenv("LD_LIBRARY_PATH"), "/etc/vexaagent/lib");
}

TEST(QueryAgentVersion, LeavesNothingOpen) {
  const ScopedEnv library_path("LD_LIBRARY_PATH", std::nullopt);
  const int before = CountDescriptors();
  QueryAgentVersion();
  EXPECT_EQ(CountDescriptors(), before);
}

}  // namespace
