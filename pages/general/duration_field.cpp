// A duration that the user picks from a list or types.
#include "pages/general/duration_field.h"

#include <string>

#include "pages/general/duration_text.h"
#include "pages/widgets.h"
#include "text/trim_blanks.h"

const DurationTraits kPullIntervalTraits = {
    Interval_min,
    kPullIntervals,
    1440,
    1440,
    "interval",
    ParseTypedInterval,
    {"Msg_PageGeneral_Interval_Err1",
     "The pull interval value is empty.\nSet interval using the recommended default value(1 day - "
     "1440 minutes)"},
    {"Msg_PageGeneral_Interval_Err3", "The input pull interval format is wrong."},
    {"Msg_PageGeneral_Interval_Err2", "The pull interval should be a number between 0 and 10080."},
    {"Msg_PageGeneral_Interval_Err4",
     "The input pull interval value max size can not exceed 50 characters."},
};

const DurationTraits kDelayScopeTraits = {
    DelayScope_min,
    kDelayScopes,
    0,
    10,
    "delayscope",
    ParseTypedDelay,
    {"Msg_PageGeneral_Delay_Err2",
     "The delay scope value is empty.\nSet delay scope using the recommended default value(10 "
     "minutes)"},
    {"Msg_PageGeneral_Delay_Err4", "The input delay scope interval format is wrong."},
    {"Msg_PageGeneral_Delay_Err3", "The delay scope should be a number between 0 and 60."},
    {"Msg_PageGeneral_Delay_Err1",
     "The input delay scope value max size can not exceed 50 characters."},
};

namespace {

bool HasFocus(const DurationField &field) {
  return gtk_widget_is_focus(GTK_WIDGET(field.entry)) == TRUE;
}

bool Tell(const DurationField &field, const FieldMessage &message) {
  return ShowFieldMessage(GTK_WIDGET(field.entry), message);
}

void SelectMinutes(const DurationField &field, GtkWidget *combo, int minutes) {
  if (!SelectNumber(combo, minutes)) {
    AppendChoice(field.store, minutes, DurationText(field.traits.text_kind, minutes));
    SelectNumber(combo, minutes);
  }
}

bool TakeNumber(DurationField &field, const std::string &text) {
  const TypedDuration typed = field.traits.parse(text);
  if (typed.fault == DurationFault::kNone) {
    Reselect(field, typed.minutes);
    field.move_on();
    return true;
  }
  const bool is_range = typed.fault == DurationFault::kRange;
  if (Tell(field, is_range ? field.traits.range : field.traits.format)) {
    gtk_widget_grab_focus(GTK_WIDGET(field.entry));
  }
  return false;
}

bool Check(DurationField &field) {
  // A copy: selecting a row replaces the entry's own text.
  const std::string text = gtk_entry_get_text(field.entry);
  const std::string typed = TrimmedBlanks(text);
  if (typed.empty()) {
    const bool can_replace = Tell(field, field.traits.empty);
    if (can_replace) {
      Reselect(field, field.traits.recommended);
    }
    return can_replace;
  }
  const auto minutes = NumberNamed(field.store, typed);
  if (!minutes.has_value()) {
    return TakeNumber(field, text);
  }
  Reselect(field, *minutes);
  return true;
}

}  // namespace

void BuildRows(DurationField &field) {
  BuildChoices(field.store, field.traits.rows);
}

void AddDurationCombo(DurationField &field, GtkWidget *column) {
  field.combo = gtk_combo_box_new_with_model_and_entry(GTK_TREE_MODEL(field.store));
  gtk_combo_box_set_entry_text_column(GTK_COMBO_BOX(field.combo), kShownColumn);
  field.entry = EntryOf(field.combo);
  gtk_entry_set_max_length(field.entry, kEntryLimit);
  IgnoreWheel(field.combo);
  AddField(column, field.combo);
}

void SelectStored(const DurationField &field, GtkWidget *combo) {
  const char *setting = agent_settings[field.traits.setting].Get();
  if (const auto minutes = StoredNumber(setting, field.traits.when_absent)) {
    SelectMinutes(field, combo, *minutes);
  }
}

void Reselect(DurationField &field, int minutes) {
  BuildRows(field);
  SelectMinutes(field, field.combo, minutes);
}

void Validate(DurationField &field) {
  field.validated = false;
  field.validated = Check(field);
}

// The signal is also emitted when the keyboard is about to enter the entry. Then there is nothing
// to check.
gboolean CheckOnLeaving(DurationField &field) {
  if (!HasFocus(field)) {
    return FALSE;
  }
  Validate(field);
  return !field.validated || !HasFocus(field);
}

gboolean CheckRoom(const DurationField &field, const GdkEventKey *event) {
  const bool is_full = gtk_entry_get_text_length(field.entry) == kEntryLimit;
  if (is_full && IsRefusedWhenFull(event) && Tell(field, field.traits.full)) {
    FocusUnselected(GTK_WIDGET(field.entry));
  }
  return FALSE;
}
