// What the three choice lists offer, which number a stored text holds, and which row a typed text
// names. No widgets.
#pragma once

#include <optional>
#include <string>

#include "text/heap_text.h"

// One fixed row of a list.
struct Choice {
  int value;  // minutes, or the log level
  const char *english;
  const char *key;  // in section Page_General
};

constexpr Choice kPullIntervals[] = {
    {0, "Never Pull", "PullInterval_Store_Item1"},
    {30, "30 minutes", "PullInterval_Store_Item2"},
    {60, "1 hour", "PullInterval_Store_Item3"},
    {360, "6 hours", "PullInterval_Store_Item4"},
    {1440, "1 day(recommended)", "PullInterval_Store_Item5"},
    {10080, "7 days", "PullInterval_Store_Item6"},
};
constexpr Choice kLogLevels[] = {
    {0, "Error(recommended)", "LogLevel_Store_Item1"},
    {1, "Warning", "LogLevel_Store_Item2"},
    {2, "Information", "LogLevel_Store_Item3"},
};
constexpr Choice kDelayScopes[] = {
    {0, "No Delay", "DelayScope_Store_Item1"},    {1, "1 minute", "DelayScope_Store_Item2"},
    {10, "10 minutes", "DelayScope_Store_Item3"}, {30, "30 minutes", "DelayScope_Store_Item4"},
    {60, "1 hour", "DelayScope_Store_Item5"},
};

constexpr int kRecommendedInterval = 1440;  // minutes; also when the setting is absent
constexpr int kRecommendedDelay = 10;       // minutes

// Characters that the entries of the page hold at most.
constexpr int kEntryLimit = 50;

// A text of section Page_General in UTF-8, for a row. Where the translation has no UTF-8 form in
// this locale it is the English one: an empty row would be read back as an empty entry, and another
// value be saved in its place.
HeapText ChoiceText(const char *english, const char *key);

// The decimal number that a setting's text (null when absent) begins with, 0 when it begins with
// none, the nearest int when it fits none. `when_absent` for an absent text; nothing for an empty
// one, which selects no row.
std::optional<int> StoredNumber(const char *setting, int when_absent);

// Whether `typed`, UTF-8 without blanks at its ends, names a row: by the row's text, as an entry
// that shows it gives it back, or by its value in decimal.
bool NamesRow(const std::string &typed, const char *row_text, int row_value);
