// The fixed rows of the page's three choice lists, and the number that a stored text chooses. No
// widgets.
#pragma once

#include <initializer_list>
#include <optional>

// One fixed row: its number (minutes, or the log level), and its text in section Page_General.
struct Choice {
  int number;
  const char *key;
  const char *english;
};
using Choices = std::initializer_list<Choice>;

inline constexpr Choices kPullIntervals = {
    {0, "PullInterval_Store_Item1", "Never Pull"},
    {30, "PullInterval_Store_Item2", "30 minutes"},
    {60, "PullInterval_Store_Item3", "1 hour"},
    {360, "PullInterval_Store_Item4", "6 hours"},
    {1440, "PullInterval_Store_Item5", "1 day(recommended)"},
    {10080, "PullInterval_Store_Item6", "7 days"},
};
inline constexpr Choices kLogLevels = {
    {0, "LogLevel_Store_Item1", "Error(recommended)"},
    {1, "LogLevel_Store_Item2", "Warning"},
    {2, "LogLevel_Store_Item3", "Information"},
};
inline constexpr Choices kDelayScopes = {
    {0, "DelayScope_Store_Item1", "No Delay"},    {1, "DelayScope_Store_Item2", "1 minute"},
    {10, "DelayScope_Store_Item3", "10 minutes"}, {30, "DelayScope_Store_Item4", "30 minutes"},
    {60, "DelayScope_Store_Item5", "1 hour"},
};

// The number that a setting's text begins with (see LeadingNumber). For an absent text (null) it is
// `when_absent`; for an empty one there is none, and no row is selected.
std::optional<int> StoredNumber(const char *setting, int when_absent);
