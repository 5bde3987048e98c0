// What OK does, and until when.
#pragma once

#include <glib.h>

// Handler of the OK button: collects and checks the General page, writes the seven settings,
// commits, tells the user that the agent must be restarted, and ends the main loop. False when a
// value was refused: a message has been shown, nothing has been written, and the window stays open.
// False too, with nothing done, while it is at work already and after EndSaving.
gboolean OnOkClicked();

// From now on nothing is written: for Cancel, and for the window's end.
void EndSaving();
