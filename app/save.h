// What OK does, and the end of saving.
#pragma once

#include <glib.h>

// Handler of the OK button: collects and checks the General page, writes the seven settings,
// commits, tells the user that the agent must be restarted, and ends the main loop. False when a
// value was refused: a message has been shown, nothing has been written, and the window stays open.
// Also false, with nothing written, when EndSaving was called before or in the meantime, and while
// it is already at work.
gboolean OnOkClicked();

// From now on nothing is written. Called by Cancel and when the window comes to its end.
void EndSaving();
