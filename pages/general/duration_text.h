// A number of minutes as a localized text of numbers and units. No widgets.
#pragma once

#include <string>
#include <string_view>

// The text (UTF-8) of any number of minutes, to show a value that is in no list. Kind "interval"
// counts in days, hours and minutes; every other kind in minutes alone. Unit words are taken as the
// string table has them, percent signs included.
//
// Singular and plural are meant as they are: a delay of one minute is "1 minutes", 1440 minutes are
// "1 days" and 60 minutes "0 days 1 hour". The lists have rows of their own for these numbers.
std::string DurationText(std::string_view kind, int minutes);
