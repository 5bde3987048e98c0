// The number that a text begins with.
#include "text/leading_number.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

int LeadingNumber(const char *text) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(
      std::clamp<long long>(std::strtoll(text, nullptr, 10), Limits::min(), Limits::max()));
}
