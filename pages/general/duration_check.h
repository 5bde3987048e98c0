// Checking what was typed into the Pull Interval and the Delay Scope entry: on Enter, when the
// keyboard would leave the entry, and on OK.
#pragma once

#include <gtk/gtk.h>

// Whether the last check ended with a valid value.
extern bool pull_interval_validated;
extern bool delay_scope_validated;

// Check the entry's text and leave the outcome in the flag above. A valid text selects its row,
// appended when it is new, and a new value also moves the focus on: from the interval to the Log
// Level, from the delay to OK. An empty text is replaced by the recommended value, after a message,
// and is valid. Anything else brings a message and takes the focus to the entry; its text and the
// setting stay as they are. Nothing is valid when the window was destroyed under the message.
void ValidatePullInterval();
void ValidateDelayScope();

// "focus" handlers: check when the keyboard would leave the entry. True ends the move, because the
// value is not valid or because the check has moved the focus already.
gboolean OnPullIntervalFocus();
gboolean OnDelayScopeFocus();

// "key-press-event" handlers: a message for every key but Delete and BackSpace while the entry is
// full. Always false: the key then does what it does.
gboolean OnPullIntervalKey(gpointer, const GdkEventKey *event);
gboolean OnDelayScopeKey(gpointer, const GdkEventKey *event);
