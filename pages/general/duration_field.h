// The two durations that the user picks from a list or types: Pull Interval and Delay Scope. What
// is typed is checked on Enter, when the keyboard would leave the entry, and on OK.
//
// Both are the same kind of field, described by data. A function that is named after one of them
// acts on that one.
#pragma once

#include <gtk/gtk.h>

#include "pages/general/choices.h"
#include "pages/general/typed_duration.h"
#include "settings/agent_settings.h"

// A text of section Message.
struct FieldMessage {
  const char *key, *english;
};

// How one duration differs from the other. Numbers are minutes.
struct DurationKind {
  Setting setting;
  Choices rows;
  int when_absent;        // shown for an absent setting
  int recommended;        // takes the place of an empty text
  const char *text_kind;  // for DurationText
  TypedDuration (*parse)(const std::string &entry_text);
  FieldMessage empty, format, range, full;
  void (*move_on)();  // takes the focus to the next field once a typed number was accepted
};
extern const DurationKind kPullIntervalKind;
extern const DurationKind kDelayScopeKind;

// A field on the page.
struct DurationField {
  const DurationKind &kind;
  GtkWidget *combo = nullptr;
  GtkEntry *entry = nullptr;  // inside the combo
  GtkListStore *store = nullptr;
  bool validated = false;  // the last check ended with a valid number
};

// Make the store, or empty it if it is there, and append the fixed rows.
void BuildPullIntervalStore();
void BuildDelayScopeStore();

// Make the row for the setting's number the active one, appending it when there is none. An empty
// setting leaves no row active.
void SelectPullInterval(GtkWidget *combo);
void SelectDelayScope(GtkWidget *combo);

// Build the list anew, which drops a row appended before, and select the row for the number.
void ReselectPullInterval(int minutes);
void ReselectDelayScope(int minutes);

// "activate" handlers: check the entry's text and leave the outcome in `validated`. A valid text
// selects its row, and a number that no row had also moves the focus on: from the interval to the
// Log Level, from the delay to OK. An empty text is replaced by the recommended number, after a
// message, and is valid. Anything else brings a message and takes the focus to the entry; its text
// and the setting stay as they are. Nothing is valid when the window was destroyed in the meantime.
void ValidatePullInterval();
void ValidateDelayScope();

// "focus" handlers: check when the keyboard would leave the entry. True ends the move, because the
// text is not valid or because the check has moved the focus already.
gboolean OnPullIntervalFocus();
gboolean OnDelayScopeFocus();

// "key-press-event" handlers: a message for every key but Delete and BackSpace while the entry is
// full. Always false, so that the key has its usual effect.
gboolean OnPullIntervalKey(gpointer, const GdkEventKey *event);
gboolean OnDelayScopeKey(gpointer, const GdkEventKey *event);
