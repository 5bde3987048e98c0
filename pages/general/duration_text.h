// A number of minutes as a localized text of numbers and units.
#pragma once

#include <string>

// The text (UTF-8) of any number of minutes, to show a value that is in no list. Kind "interval"
// counts in days, hours and minutes; every other kind in minutes alone. Unit words are taken as the
// string table has them, percent signs included.
//
// It is singular and plural as the product has always shown them: "1 minutes" of a delay, "1 days",
// "0 days 1 hour" for 60 minutes.
std::string DurationText(const char *kind, int minutes);
