// The three choice lists on the page: their stores, the row for a value, and the row that a typed
// text names. The combo boxes and stores are those of the page (general_page_widgets.h).
#pragma once

#include <gtk/gtk.h>

#include <string>

#include "text/heap_text.h"

enum ChoiceColumn { kValueColumn, kTextColumn, kChoiceColumns };  // a signed number, a UTF-8 text

// What the last walk over a list for a typed text came to.
extern bool pull_interval_matched;
extern bool delay_scope_matched;

// Make the page's store on first use, empty it later, and append the fixed rows. The entry of the
// combo box that shows the store keeps its text.
void BuildPullIntervalStore();
void BuildLogLevelStore();
void BuildDelayScopeStore();

// Make the row for the setting's value the active one. A duration that has none gets one at the end
// of its list, and an empty setting leaves no row active; the log level takes the first row then.
void SelectPullInterval(GtkWidget *combo);
void SelectLogLevel(GtkWidget *combo);
void SelectDelayScope(GtkWidget *combo);

// Build the list anew, which drops a row appended before, and make the row for the value the active
// one on the page, appending it when it is none of the fixed ones.
void ReselectPullInterval(int minutes);
void ReselectDelayScope(int minutes);

// Search the list for the first row that `typed` names (trimmed, UTF-8), tell in the flag above
// whether there is one, and select it as above.
void MatchPullInterval(const std::string &typed);
void MatchDelayScope(const std::string &typed);

// The active row's value in decimal; null when no row is active.
HeapText ActiveValue(GtkWidget *combo, GtkListStore *store);

// Handler of the Log Level combo box: stores the chosen level as the setting.
void OnLogLevelChanged();
