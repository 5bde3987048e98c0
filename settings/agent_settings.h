// The seven settings of the management agent: what they are called, how they are loaded at start,
// how the current gateway is refreshed, and how they are saved on OK.
#pragma once

#include <array>

#include "text/heap_text.h"

// In the order in which they are loaded and saved; named as their registry keys are.
enum Setting {
  CurrentGateway,
  BackupGateway,
  Interval_min,       // decimal text, minutes
  LogLevel,           // decimal text
  DelayScope_min,     // decimal text, minutes
  GetGroupsFromDHCP,  // "1" or "0"
  PreAssignGroups,    // see pages/groups/groups_value.h
  kSettingCount
};

// A text for each setting, null when absent. Bytes exactly as the registry gives them; what the
// user has typed is UTF-8.
using SettingTexts = std::array<HeapText, kSettingCount>;

// The working copy that the pages show and change. Replacing a text frees the old one, which an
// assignment does.
struct AgentSettings {
  SettingTexts texts;
  HeapText &operator[](Setting setting) { return texts[setting]; }
};
extern AgentSettings agent_settings;

// Reads the seven settings from the registry, keeps them as the loaded values for the life of the
// process, and fills `agent_settings` from these. What cannot be read is an empty text.
void LoadSettings();

// Makes `settings` fresh copies of the loaded values. A null one takes the setting's default where
// it has one ("1440", "0", "0" and "1", from Interval_min to GetGroupsFromDHCP). An empty one stays
// empty: the program does not put defaults in place of what the registry says, so after
// LoadSettings, which always makes a text, no default is ever used.
void FillSettings(AgentSettings &settings, const SettingTexts &loaded);

// Writes the seven working texts to the registry, an absent one as an empty text, then commits.
// Failures are not reported, and none stops what follows. A text that holds a single quote cannot
// go through the client's command line: the registry keeps what it had for that setting.
void SaveSettings();

// Makes CurrentGateway what the registry holds; empty, as at the start, when the client complains,
// and what it was when the client prints nothing. In memory only: the entry, into which the user
// may be typing, stays as it is.
void RefreshCurrentGateway();

// While one of these lives, the refresh reads the registry but leaves the setting alone: what OK
// has collected is what it saves, however long its messages stay open.
class RefreshHold {
 public:
  RefreshHold();
  ~RefreshHold();
  RefreshHold(const RefreshHold &) = delete;
  RefreshHold &operator=(const RefreshHold &) = delete;
};

// Frees the working texts; they are absent afterwards.
void FreeSettings();
