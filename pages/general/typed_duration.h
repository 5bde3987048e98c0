// What a duration typed into the Pull Interval or the Delay Scope entry means. No widgets.
#pragma once

#include <string>
#include <string_view>

// How many characters an entry of the General page holds.
inline constexpr int kEntryLimit = 50;

// Whether `typed`, UTF-8 without blanks at its ends, names a row: by the row's text, as an entry
// that shows it gives it back, or by its number in decimal.
bool NamesRow(std::string_view typed, std::string_view row_text, int row_number);

enum class DurationFault {
  kNone,
  kFormat,  // does not begin with a number
  kRange,   // above the limit, or not a 32-bit integer
};

struct TypedDuration {
  DurationFault fault;
  int minutes;  // 0 with a fault
};

inline constexpr int kMaxInterval = 10080;  // minutes
inline constexpr int kMaxDelay = 60;        // minutes

// Both take the entry's whole text, blanks included, when it names no row. After an optional plus
// sign comes a number that is hexadecimal after "0x", octal after any other "0", and decimal
// otherwise. One decimal rounds it up from .5; whatever else follows is ignored.
//
// They differ in what they read as the number. An interval is read from the very start of the
// entry's text, sign and blanks included, and only for as many bytes as the text without these has:
// "+30" is 3 and " 45" is 4. A delay is what follows the sign: "+30" is 30, and "+-5" is -5, since
// the only lower limit is that of the type.
TypedDuration ParseTypedInterval(const std::string &entry_text);
TypedDuration ParseTypedDelay(const std::string &entry_text);
