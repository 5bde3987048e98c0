#include "pages/general/duration_check.h"

#include <gdk/gdkkeysyms.h>

#include <string>

#include "pages/general/choices.h"
#include "pages/general/duration_choices.h"
#include "pages/general/general_page_widgets.h"
#include "pages/general/typed_duration.h"
#include "pages/ok_button.h"
#include "text/message_dialogs.h"
#include "text/to_utf8.h"
#include "text/trim_blanks.h"

bool pull_interval_validated = false;
bool delay_scope_validated = false;

namespace {

// A copy: selecting a row replaces the entry's own text.
std::string TypedText(GtkWidget *combo) {
  return gtk_entry_get_text(GTK_ENTRY(EntryOf(combo)));
}

HeapText IntervalFaultText(DurationFault fault) {
  return fault == DurationFault::kRange
             ? ShownText("The pull interval should be a number between 0 and 10080.",
                         "Msg_PageGeneral_Interval_Err2", "Message")
             : ShownText("The input pull interval format is wrong.",
                         "Msg_PageGeneral_Interval_Err3", "Message");
}

HeapText DelayFaultText(DurationFault fault) {
  return fault == DurationFault::kRange
             ? ShownText("The delay scope should be a number between 0 and 60.",
                         "Msg_PageGeneral_Delay_Err3", "Message")
             : ShownText("The input delay scope interval format is wrong.",
                         "Msg_PageGeneral_Delay_Err4", "Message");
}

// Shows the message. False when the page is gone afterwards: its window can be destroyed from
// outside while the message is open.
bool Tell(const HeapText &message) {
  ShowMessage(message.Get());
  return general_page.box != nullptr;
}

bool ReplaceEmptyInterval() {
  if (!Tell(ShownText("The pull interval value is empty.\nSet interval using the recommended "
                      "default value(1 day - 1440 minutes)",
                      "Msg_PageGeneral_Interval_Err1", "Message"))) {
    return false;
  }
  ReselectPullInterval(kRecommendedInterval);
  return true;
}

bool ReplaceEmptyDelay() {
  if (!Tell(ShownText("The delay scope value is empty.\nSet delay scope using the recommended "
                      "default value(10 minutes)",
                      "Msg_PageGeneral_Delay_Err2", "Message"))) {
    return false;
  }
  ReselectDelayScope(kRecommendedDelay);
  return true;
}

// True when the typed text is a number within the limits.
bool TakeTypedInterval(const std::string &text) {
  const TypedDuration typed = ParseTypedInterval(text.c_str());
  if (typed.fault != DurationFault::kNone) {
    if (Tell(IntervalFaultText(typed.fault))) {
      gtk_widget_grab_focus(EntryOf(general_page.pull_interval));
    }
    return false;
  }
  ReselectPullInterval(typed.minutes);
  gtk_widget_grab_focus(general_page.log_level);
  return true;
}

bool TakeTypedDelay(const std::string &text) {
  const TypedDuration typed = ParseTypedDelay(text.c_str());
  if (typed.fault != DurationFault::kNone) {
    if (Tell(DelayFaultText(typed.fault))) {
      gtk_widget_grab_focus(EntryOf(general_page.delay_scope));
    }
    return false;
  }
  ReselectDelayScope(typed.minutes);
  FocusOkButton();
  return true;
}

bool HasFocus(GtkWidget *combo) {
  return gtk_widget_is_focus(EntryOf(combo)) == TRUE;
}

bool IsRefused(const GdkEventKey *event, GtkWidget *combo) {
  return event->keyval != GDK_KEY_Delete && event->keyval != GDK_KEY_BackSpace &&
         gtk_entry_get_text_length(GTK_ENTRY(EntryOf(combo))) == kEntryLimit;
}

// Without selecting the text of an entry that has the focus already: the key that has just been
// refused would replace it.
void FocusUnselected(GtkWidget *combo) {
  if (!HasFocus(combo)) {
    gtk_widget_grab_focus(EntryOf(combo));
  }
}

}  // namespace

void ValidatePullInterval() {
  pull_interval_validated = false;
  const std::string text = TypedText(general_page.pull_interval);
  const std::string typed = TrimmedBlanks(text.c_str());
  if (typed.empty()) {
    pull_interval_validated = ReplaceEmptyInterval();
    return;
  }
  MatchPullInterval(typed);
  pull_interval_validated = pull_interval_matched || TakeTypedInterval(text);
}

void ValidateDelayScope() {
  delay_scope_validated = false;
  const std::string text = TypedText(general_page.delay_scope);
  const std::string typed = TrimmedBlanks(text.c_str());
  if (typed.empty()) {
    delay_scope_validated = ReplaceEmptyDelay();
    return;
  }
  MatchDelayScope(typed);
  delay_scope_validated = delay_scope_matched || TakeTypedDelay(text);
}

// The signal comes also when the keyboard is about to enter the entry: there is nothing to check
// then.
gboolean OnPullIntervalFocus() {
  if (!HasFocus(general_page.pull_interval)) {
    return FALSE;
  }
  ValidatePullInterval();
  return !pull_interval_validated || !HasFocus(general_page.pull_interval);
}

gboolean OnDelayScopeFocus() {
  if (!HasFocus(general_page.delay_scope)) {
    return FALSE;
  }
  ValidateDelayScope();
  return !delay_scope_validated || !HasFocus(general_page.delay_scope);
}

gboolean OnPullIntervalKey(gpointer, const GdkEventKey *event) {
  if (IsRefused(event, general_page.pull_interval) &&
      Tell(ShownText("The input pull interval value max size can not exceed 50 characters.",
                     "Msg_PageGeneral_Interval_Err4", "Message"))) {
    FocusUnselected(general_page.pull_interval);
  }
  return FALSE;
}

gboolean OnDelayScopeKey(gpointer, const GdkEventKey *event) {
  if (IsRefused(event, general_page.delay_scope) &&
      Tell(ShownText("The input delay scope value max size can not exceed 50 characters.",
                     "Msg_PageGeneral_Delay_Err1", "Message"))) {
    FocusUnselected(general_page.delay_scope);
  }
  return FALSE;
}
