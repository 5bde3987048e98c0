// The first page of the notebook: the agent's version and the five general settings.
#pragma once

#include <gtk/gtk.h>

#include <string_view>

// Builds the page, once, after the settings and the string table were loaded. The version (bytes;
// empty when none is known) is shown with its line end, and with a replacement for what is not
// UTF-8; a long one is shortened.
void BuildGeneralPage(std::string_view agent_version);

// The built page. The notebook that it is put into owns it.
GtkWidget *GeneralPageWidget();
