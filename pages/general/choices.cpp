#include "pages/general/choices.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "text/string_table.h"
#include "text/to_utf8.h"
#include "text/trim_blanks.h"

namespace {

// The first characters of a UTF-8 text, as many as an entry holds.
std::string HeldByEntry(const char *text) {
  std::size_t bytes = 0;
  for (int characters = 0; text[bytes] != '\0'; ++bytes) {
    const bool begins_character = (static_cast<unsigned char>(text[bytes]) & 0xC0U) != 0x80U;
    if (begins_character && ++characters > kEntryLimit) {
      break;
    }
  }
  return std::string(text, bytes);
}

}  // namespace

HeapText ChoiceText(const char *english, const char *key) {
  HeapText shown = ToUtf8(LookupText("Page_General", key, english).OrEmpty());
  return shown ? std::move(shown) : HeapText::Copy(english);
}

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

// A row of more than 50 characters, or with blanks at its ends, is a translator's slip; it is found
// all the same.
bool NamesRow(const std::string &typed, const char *row_text, int row_value) {
  return typed == TrimmedBlanks(HeldByEntry(row_text).c_str()) ||
         typed == std::to_string(row_value);
}
