// What a duration typed into the Pull Interval or the Delay Scope entry means.
#pragma once

enum class DurationFault {
  kNone,
  kFormat,  // does not begin with a number
  kRange,   // above the limit, or no 32-bit integer
};

struct TypedDuration {
  DurationFault fault;
  int minutes;  // 0 with a fault
};

constexpr int kMaxInterval = 10080;  // minutes
constexpr int kMaxDelay = 60;        // minutes

// Both take the entry's text as it stands, blanks included, for a text that names no row. After an
// optional plus sign comes a number that is hexadecimal after "0x", octal after another "0", else
// decimal. One decimal rounds it up from .5; whatever else follows is ignored.
//
// They differ in what they read as the number. That of an interval is looked for at the very start
// of the entry, sign and blanks included, and as many bytes are lost at its end: "+30" is 3 and
// " 45" is 4. That of a delay is what stands behind the sign: "+30" is 30, and "+-5" is -5, since
// the only lower limit is that of the type.
TypedDuration ParseTypedInterval(const char *entry_text);
TypedDuration ParseTypedDelay(const char *entry_text);
