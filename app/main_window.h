// The main window: a notebook with the two pages, OK and Cancel.
#pragma once

// Builds and shows the window and starts the refresh of the current gateway. Call once, after
// gtk_init, with the settings and the texts loaded. OK, Cancel and closing the window end the main
// loop.
void OpenMainWindow();
