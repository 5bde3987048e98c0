// What OK does.
#pragma once

#include <glib.h>

// Handler of the OK button: collects and checks the General page, writes the seven settings,
// commits, tells the user that the agent must be restarted, and ends the main loop. False when a
// value was refused: a message has been shown, nothing has been written, and the window stays open.
gboolean OnOkClicked();
