// A number of minutes as text.
#include "pages/general/duration_text.h"

#include "text/shown_text.h"

namespace {

constexpr int kHour = 60;         // minutes
constexpr int kDay = 24 * kHour;  // minutes

// A unit's words in section Page_General.
struct Unit {
  const char *key, *english;
  const char *plural_key, *plural;
};
constexpr Unit kMinuteWords = {"Time_Minute", "minute", "Time_Minutes", "minutes"};
constexpr Unit kHourWords = {"Time_Hour", "hour", "Time_Hours", "hours"};
constexpr Unit kDayWords = {"Time_Day", "day", "Time_Days", "days"};

std::string Piece(int number, const char *key, const char *english) {
  return std::to_string(number) + " " + ShownText("Page_General", key, english).OrEmpty();
}

std::string Plural(int number, const Unit &unit) {
  return Piece(number, unit.plural_key, unit.plural);
}

std::string Counted(int number, const Unit &unit) {
  return number == 1 ? Piece(number, unit.key, unit.english) : Plural(number, unit);
}

std::string WithinADay(int minutes) {
  return minutes % kHour == 0
             ? Plural(minutes / kHour, kHourWords)
             : Counted(minutes / kHour, kHourWords) + " " + Counted(minutes % kHour, kMinuteWords);
}

// Also for less than a day: 60 is "0 days 1 hour", and negative numbers have a sign in each part.
std::string WithDays(int total) {
  const int days = total / kDay;
  const int hours = total % kDay / kHour;
  const int minutes = total % kHour;
  if (hours == 0 && minutes == 0) {
    return Plural(days, kDayWords);  // "1 days" too
  }
  std::string text = Counted(days, kDayWords);
  if (hours != 0) {
    text += " " + Counted(hours, kHourWords);
  }
  if (minutes != 0) {
    text += " " + Counted(minutes, kMinuteWords);
  }
  return text;
}

}  // namespace

std::string DurationText(std::string_view kind, int minutes) {
  if (kind != "interval") {
    return Plural(minutes, kMinuteWords);  // "1 minutes" too
  }
  if (minutes >= 1 && minutes < kHour) {
    return Counted(minutes, kMinuteWords);
  }
  if (minutes > kHour && minutes < kDay) {
    return WithinADay(minutes);
  }
  return WithDays(minutes);
}
