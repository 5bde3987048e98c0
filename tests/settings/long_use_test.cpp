// Refreshes as they come in weeks of an open window: KORV_ROUNDS of them, fifty unless told
// otherwise. script/soak runs the long form.
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "settings/agent_settings.h"
#include "tests/support/descriptors.h"
#include "tests/support/fake_regmux.h"

namespace {

constexpr int kWarmUp = 5;  // what the first ones load stays
constexpr long kResidentBound = 32L * 1024;

int Rounds() {
  const char *rounds = std::getenv("KORV_ROUNDS");
  return rounds ? std::atoi(rounds) : 50;
}

long ResidentBytes() {
  long all_pages = 0;
  long resident_pages = 0;
  std::ifstream("/proc/self/statm") >> all_pages >> resident_pages;
  return resident_pages * sysconf(_SC_PAGESIZE);
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
  const long resident = ResidentBytes();
  const long heap = HeapBytes();

  Refresh(Rounds());
  const long heap_growth = HeapBytes() - heap;
  const long resident_growth = ResidentBytes() - resident;
  const int descriptor_growth = CountDescriptors() - descriptors;
  std::printf("%d refreshes: %+ld bytes of heap, %+ld bytes resident, %+d descriptors\n", Rounds(),
              heap_growth, resident_growth, descriptor_growth);
  EXPECT_EQ(heap_growth, 0);
  EXPECT_LE(resident_growth, kResidentBound);
  EXPECT_EQ(descriptor_growth, 0);
  FreeSettings();
}

}  // namespace
