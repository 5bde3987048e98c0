// Typed intervals and delays: each is within its limits or refused, and a number has a text.
#include <limits>

#include "pages/general/choices.h"
#include "pages/general/duration_text.h"
#include "pages/general/typed_duration.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string typed = Bytes(data, size);
  const TypedDuration interval = ParseTypedInterval(typed.c_str());
  CHECK_PROPERTY(interval.minutes >= 0 && interval.minutes <= kMaxInterval);
  CHECK_PROPERTY(interval.fault == DurationFault::kNone || interval.minutes == 0);
  const TypedDuration delay = ParseTypedDelay(typed.c_str());
  CHECK_PROPERTY(delay.minutes <= kMaxDelay);
  CHECK_PROPERTY(delay.fault == DurationFault::kNone || delay.minutes == 0);
  for (const int minutes : {interval.minutes, delay.minutes}) {
    const std::string row = DurationText("interval", minutes);
    CHECK_PROPERTY(NamesRow(row, row.c_str(), minutes));
    CHECK_PROPERTY(NamesRow(std::to_string(minutes), row.c_str(), minutes));
  }
  const auto stored = StoredNumber(typed.c_str(), 1440);
  CHECK_PROPERTY(stored.has_value() == (typed.c_str()[0] != '\0'));
  if (stored.has_value()) {
    CHECK_PROPERTY(!DurationText("interval", *stored).empty());
    CHECK_PROPERTY(!DurationText("delayScope", *stored).empty());
  }
  return 0;
}
