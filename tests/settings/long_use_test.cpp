// Refreshes as they come in weeks of an open window: KORV_ROUNDS of them, fifty unless told
// otherwise. script/soak runs the long form.
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "settings/agent_settings.h"
#include "tests/support/descriptors.h"
#include "tests/support/fake_regmux.h"

namespace {

constexpr int kWarmUp = 5;  // what the first ones load stays
constexpr long kOwnBound = 32L * 1024;

int Rounds() {
  const char *rounds = std::getenv("KORV_ROUNDS");
  return rounds ? std::atoi(rounds) : 50;
}

// What the process has of its own; pages of the libraries come when they are first used.
long OwnBytes() {
  std::ifstream file("/proc/self/smaps_rollup");
  for (std::string word; file >> word;) {
    if (word == "Anonymous:") {
      long kibibytes = 0;
      file >> kibibytes;
      return kibibytes * 1024;
    }
  }
  ADD_FAILURE() << "the kernel does not tell";
  return 0;
}

long HeapBytes() {
  return static_cast<long>(mallinfo2().uordblks);
}

// The finished child that each refresh leaves is waited for here: it does not count.
void Refresh(int times) {
  for (int number = 0; number < times; ++number) {
    RefreshCurrentGateway();
    ASSERT_STREQ(agent_settings[CurrentGateway].Get(), "gateway.example");
    ASSERT_GT(wait(nullptr), 0);
    ASSERT_EQ(wait(nullptr), -1) << "one child, and no more";
  }
}

TEST(LongUseTest, RefreshesLeaveNoMemoryAndNoDescriptorBehind) {
  const FakeRegmux client("echo 'value gateway.example'");
  Refresh(kWarmUp);
  const int descriptors = CountDescriptors();
  const long own = OwnBytes();
  Refresh(kWarmUp);  // to read that has changed what the allocator keeps at hand
  const long heap = HeapBytes();

  Refresh(Rounds());
  const long heap_growth = HeapBytes() - heap;
  const long own_growth = OwnBytes() - own;
  const int descriptor_growth = CountDescriptors() - descriptors;
  std::printf("%d refreshes: %+ld bytes of heap, %+ld bytes of its own, %+d descriptors\n",
              Rounds(), heap_growth, own_growth, descriptor_growth);
  EXPECT_EQ(heap_growth, 0);
  EXPECT_LE(own_growth, kOwnBound);
  EXPECT_EQ(descriptor_growth, 0);
  FreeSettings();
}

}  // namespace
