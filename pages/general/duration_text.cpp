#include "pages/general/duration_text.h"

#include <cstring>

#include "pages/general/choices.h"

namespace {

constexpr int kHour = 60;         // minutes
constexpr int kDay = 24 * kHour;  // minutes

std::string Piece(int number, const HeapText &unit) {
  return std::to_string(number) + " " + unit.OrEmpty();
}

std::string Minutes(int number) {
  return Piece(number, ChoiceText("minutes", "Time_Minutes"));
}

std::string Hours(int number) {
  return Piece(number, ChoiceText("hours", "Time_Hours"));
}

std::string Days(int number) {
  return Piece(number, ChoiceText("days", "Time_Days"));
}

std::string MinuteOrMinutes(int number) {
  return number == 1 ? Piece(number, ChoiceText("minute", "Time_Minute")) : Minutes(number);
}

std::string HourOrHours(int number) {
  return number == 1 ? Piece(number, ChoiceText("hour", "Time_Hour")) : Hours(number);
}

std::string DayOrDays(int number) {
  return number == 1 ? Piece(number, ChoiceText("day", "Time_Day")) : Days(number);
}

std::string WithinADay(int minutes) {
  return minutes % kHour == 0
             ? Hours(minutes / kHour)
             : HourOrHours(minutes / kHour) + " " + MinuteOrMinutes(minutes % kHour);
}

// Also for what is no whole day long: 60 is "0 days 1 hour", and negative numbers have a sign in
// each part.
std::string WithDays(int total) {
  const int days = total / kDay;
  const int hours = total % kDay / kHour;
  const int minutes = total % kHour;
  if (hours == 0 && minutes == 0) {
    return Days(days);  // never singular
  }
  std::string text = DayOrDays(days);
  if (hours != 0) {
    text += " " + HourOrHours(hours);
  }
  if (minutes != 0) {
    text += " " + MinuteOrMinutes(minutes);
  }
  return text;
}

}  // namespace

std::string DurationText(const char *kind, int minutes) {
  if (std::strcmp(kind, "interval") != 0) {
    return Minutes(minutes);  // never singular
  }
  if (minutes >= 1 && minutes < kHour) {
    return MinuteOrMinutes(minutes);
  }
  if (minutes > kHour && minutes < kDay) {
    return WithinADay(minutes);
  }
  return WithDays(minutes);
}
