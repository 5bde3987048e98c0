// The number that a stored text chooses.
#include "pages/general/choices.h"

#include "text/leading_number.h"

std::optional<int> StoredNumber(const char *setting, int when_absent) {
  if (setting == nullptr) {
    return when_absent;
  }
  return *setting == '\0' ? std::nullopt : std::make_optional(LeadingNumber(setting));
}
