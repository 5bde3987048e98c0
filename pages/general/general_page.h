// The first page of the notebook: the agent's version and the five general settings.
#pragma once

#include <gtk/gtk.h>

// Builds the page, once, after the settings and the string table were loaded. The version
// (bytes; null: none is known) is shown with its line end, and with a replacement for what is not
// UTF-8; the text stays the caller's.
void BuildGeneralPage(const char *agent_version);

// The built page, for whoever puts it into the notebook and thereby owns it.
GtkWidget *GeneralPageWidget();
