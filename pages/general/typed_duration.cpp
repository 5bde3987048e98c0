// What a typed duration means.
#include "pages/general/typed_duration.h"

#include <cstdlib>
#include <cstring>
#include <limits>

#include "text/trim_blanks.h"
#include "text/utf8.h"

namespace {

bool IsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

// For a text without blanks at its ends.
bool BeginsLikeNumber(const std::string &typed) {
  return !typed.empty() && (typed[0] == '+' || IsDigit(typed[0]));
}

std::string WithoutPlus(const std::string &typed) {
  return typed.substr(typed[0] == '+' ? 1 : 0);
}

// Not left to strtol: newer C libraries also take "0b" for binary, but "0b11" is to mean 0.
int BaseOf(const char *number) {
  number += std::strspn(number, " \t\n\v\f\r");
  number += *number == '+' || *number == '-' ? 1 : 0;
  if (*number != '0') {
    return 10;
  }
  return number[1] == 'x' || number[1] == 'X' ? 16 : 8;
}

bool RoundsUp(const char *after_number) {
  return after_number[0] == '.' && after_number[1] > '4' && IsDigit(after_number[1]);
}

// Reads the number from `text`, if `typed` looks like one.
TypedDuration ReadNumber(const std::string &typed, const std::string &text, int limit) {
  if (!BeginsLikeNumber(typed)) {
    return {DurationFault::kFormat, 0};
  }
  char *end = nullptr;
  long long number = std::strtoll(text.c_str(), &end, BaseOf(text.c_str()));  // saturates
  if (end == text.c_str()) {
    return {DurationFault::kFormat, 0};
  }
  if (number <= limit && RoundsUp(end)) {
    ++number;
  }
  if (number > limit || number < std::numeric_limits<int>::min()) {
    return {DurationFault::kRange, 0};
  }
  return {DurationFault::kNone, static_cast<int>(number)};
}

}  // namespace

// A row of more than 50 characters, or with blanks at its ends, is a translator's slip; it is found
// nevertheless.
bool NamesRow(std::string_view typed, std::string_view row_text, int row_number) {
  return typed == TrimmedBlanks(FirstCharacters(row_text, kEntryLimit)) ||
         typed == std::to_string(row_number);
}

TypedDuration ParseTypedInterval(const std::string &entry_text) {
  const std::string typed = TrimmedBlanks(entry_text);
  return ReadNumber(typed, entry_text.substr(0, WithoutPlus(typed).size()), kMaxInterval);
}

TypedDuration ParseTypedDelay(const std::string &entry_text) {
  const std::string typed = TrimmedBlanks(entry_text);
  return ReadNumber(typed, WithoutPlus(typed), kMaxDelay);
}
