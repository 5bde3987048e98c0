// The number that a stored text chooses.
#include "pages/general/choices.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

std::optional<int> StoredNumber(const char *setting, int when_absent) {
  if (setting == nullptr) {
    return when_absent;
  }
  if (*setting == '\0') {
    return std::nullopt;
  }
  const long long number = std::strtoll(setting, nullptr, 10);
  return static_cast<int>(std::clamp<long long>(number, std::numeric_limits<int>::min(),
                                                std::numeric_limits<int>::max()));
}
