// A duration that the user picks from a list or types: Pull Interval and Delay Scope are two such
// fields, described by data. What is typed is checked on Enter, when the keyboard would leave the
// entry, and on OK.
#pragma once

#include <gtk/gtk.h>

#include "pages/field_message.h"
#include "pages/general/choice_list.h"
#include "pages/general/typed_duration.h"
#include "settings/agent_settings.h"

// How one duration differs from the other. Numbers are minutes.
struct DurationTraits {
  Setting setting;
  Choices rows;
  int when_absent;        // shown for an absent setting
  int recommended;        // takes the place of an empty text
  const char *text_kind;  // for DurationText
  TypedDuration (*parse)(const std::string &entry_text);
  FieldMessage empty, format, range, full;
};

extern const DurationTraits kPullIntervalTraits;
extern const DurationTraits kDelayScopeTraits;

// A field on a page.
struct DurationField {
  const DurationTraits &traits;
  void (*move_on)() = nullptr;  // to the next field, see Validate
  GtkWidget *combo = nullptr;
  GtkEntry *entry = nullptr;  // inside the combo
  GtkListStore *store = nullptr;
  bool validated = false;  // the last check ended with a valid number
};

// Makes the store, or empties it if it is there, and appends the fixed rows.
void BuildRows(DurationField &field);

// Adds a combo box that shows the finished store to the column. No row is active yet.
void AddDurationCombo(DurationField &field, GtkWidget *column);

// Makes the row for the setting's number the active one, appending it when there is none. An empty
// setting leaves no row active.
void SelectStored(const DurationField &field, GtkWidget *combo);

// Builds the list anew, which drops a row appended before, and selects the row for the number.
void Reselect(DurationField &field, int minutes);

// Checks the entry's text and leaves the outcome in `validated`. A valid text selects its row; one
// that does not name a row, by the row's text or number, also moves the focus on. An empty text is
// replaced by the recommended number, after a message, and is valid. Anything else brings a message
// and takes the focus to the entry; its text and the setting stay as they are. Nothing is valid
// when the window was destroyed while the message was open.
void Validate(DurationField &field);

// For "focus": checks when the keyboard would leave the entry. True ends the move, because the text
// is not valid or because the check has moved the focus already.
gboolean CheckOnLeaving(DurationField &field);

// For "key-press-event": a message for every key but Delete and BackSpace while the entry is full.
// Always false, so that the key has its usual effect.
gboolean CheckRoom(const DurationField &field, const GdkEventKey *event);
