// The two durations that the user picks from a list or types.
#include "pages/general/duration_field.h"

#include <string>

#include "pages/general/choice_list.h"
#include "pages/general/duration_text.h"
#include "pages/general/general_page_widgets.h"
#include "pages/ok_button.h"
#include "pages/widgets.h"
#include "text/trim_blanks.h"

namespace {

bool HasFocus(const DurationField &field) {
  return gtk_widget_is_focus(GTK_WIDGET(field.entry)) == TRUE;
}

void SelectMinutes(const DurationField &field, GtkWidget *combo, int minutes) {
  if (!SelectNumber(combo, minutes)) {
    AppendChoice(field.store, minutes, DurationText(field.kind.text_kind, minutes));
    SelectNumber(combo, minutes);
  }
}

void SelectStored(const DurationField &field, GtkWidget *combo) {
  const char *setting = agent_settings[field.kind.setting].Get();
  if (const auto minutes = StoredNumber(setting, field.kind.when_absent)) {
    SelectMinutes(field, combo, *minutes);
  }
}

void Reselect(DurationField &field, int minutes) {
  BuildChoices(field.store, field.kind.rows);
  SelectMinutes(field, field.combo, minutes);
}

bool TakeNumber(DurationField &field, const std::string &text) {
  const TypedDuration typed = field.kind.parse(text);
  if (typed.fault == DurationFault::kNone) {
    Reselect(field, typed.minutes);
    field.kind.move_on();
    return true;
  }
  const bool is_range = typed.fault == DurationFault::kRange;
  if (ShowFieldMessage(is_range ? field.kind.range : field.kind.format)) {
    gtk_widget_grab_focus(GTK_WIDGET(field.entry));
  }
  return false;
}

bool Check(DurationField &field) {
  // A copy: selecting a row replaces the entry's own text.
  const std::string text = gtk_entry_get_text(field.entry);
  const std::string typed = TrimmedBlanks(text);
  if (typed.empty()) {
    const bool can_replace = ShowFieldMessage(field.kind.empty);
    if (can_replace) {
      Reselect(field, field.kind.recommended);
    }
    return can_replace;
  }
  if (const auto minutes = NumberNamed(field.store, typed)) {
    Reselect(field, *minutes);
    return true;
  }
  return TakeNumber(field, text);
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
  if (is_full && IsRefusedWhenFull(event) && ShowFieldMessage(field.kind.full)) {
    FocusUnselected(GTK_WIDGET(field.entry));
  }
  return FALSE;
}

}  // namespace

const DurationKind kPullIntervalKind = {
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
    [] { gtk_widget_grab_focus(general_page.log_level); },
};

const DurationKind kDelayScopeKind = {
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
    FocusOkButton,
};

void BuildPullIntervalStore() {
  BuildChoices(general_page.pull_interval.store, kPullIntervals);
}

void BuildDelayScopeStore() {
  BuildChoices(general_page.delay_scope.store, kDelayScopes);
}

void SelectPullInterval(GtkWidget *combo) {
  SelectStored(general_page.pull_interval, combo);
}

void SelectDelayScope(GtkWidget *combo) {
  SelectStored(general_page.delay_scope, combo);
}

void ReselectPullInterval(int minutes) {
  Reselect(general_page.pull_interval, minutes);
}

void ReselectDelayScope(int minutes) {
  Reselect(general_page.delay_scope, minutes);
}

void ValidatePullInterval() {
  Validate(general_page.pull_interval);
}

void ValidateDelayScope() {
  Validate(general_page.delay_scope);
}

gboolean OnPullIntervalFocus() {
  return CheckOnLeaving(general_page.pull_interval);
}

gboolean OnDelayScopeFocus() {
  return CheckOnLeaving(general_page.delay_scope);
}

gboolean OnPullIntervalKey(gpointer, const GdkEventKey *event) {
  return CheckRoom(general_page.pull_interval, event);
}

gboolean OnDelayScopeKey(gpointer, const GdkEventKey *event) {
  return CheckRoom(general_page.delay_scope, event);
}
