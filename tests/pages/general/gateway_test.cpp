// Which texts name a gateway, as far as that needs no name server.
#include "pages/general/gateway.h"

#include <gtest/gtest.h>
#include <netdb.h>

namespace {

TEST(IsDottedAddress, TakesExactlyTheSystemsOwnForm) {
  for (const char *text : {"192.168.1.10", "0.0.0.0", "127.0.0.1", "255.255.255.254"}) {
    EXPECT_TRUE(IsDottedAddress(text)) << text;
  }
  for (const char *text : {"255.255.255.255", "10.1", "010.0.0.1", "10.0.0.1 ", "10.0.0.1 x", "1",
                           "0x7f.0.0.1", "256.1.1.1", "1.2.3.4.5", "gateway", ""}) {
    EXPECT_FALSE(IsDottedAddress(text)) << text;
  }
}

// What the lookup itself makes of a text with nothing but numbers, on every machine.
TEST(CheckGateway, ReplacesWhatResolvesByItsDottedForm) {
  const std::pair<const char *, const char *> cases[] = {
      {"192.168.1.10", "192.168.1.10"}, {"10.1", "10.0.0.1"},   {"1", "0.0.0.1"},
      {"010.0.0.1", "8.0.0.1"},         {"0.0.0.0", "0.0.0.0"},
  };
  for (const auto &[text, address] : cases) {
    std::string gateway = text;
    EXPECT_TRUE(CheckGateway(gateway)) << text;
    EXPECT_EQ(gateway, address);
  }
}

TEST(CheckGateway, ReplacesAHostsNameByItsAddress) {
  if (gethostbyname("localhost") == nullptr) {
    GTEST_SKIP() << "a minimal system need not know its own name";
  }
  std::string gateway = "localhost";
  EXPECT_TRUE(CheckGateway(gateway));
  EXPECT_EQ(gateway, "127.0.0.1");
}

TEST(CheckGateway, RefusesTheAllOnesAddress) {
  for (const char *text : {"255.255.255.255", "4294967295", "0xffffffff", "255.0xffffff"}) {
    std::string gateway = text;
    EXPECT_FALSE(CheckGateway(gateway)) << text;
  }
}

// Only texts that need no name server; names are tried on the simulated device, which has none.
TEST(CheckGateway, RefusesWhatNeitherResolvesNorIsAnAddress) {
  for (const char *text : {"256.1.1.1", "1.2.3.4.5", "10.0.0.1.", "::1"}) {
    std::string gateway = text;
    EXPECT_FALSE(CheckGateway(gateway)) << text;
    EXPECT_EQ(gateway, text);
  }
}

}  // namespace
