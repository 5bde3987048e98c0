// The Log Level: a combo box of three fixed rows.
#pragma once

#include <gtk/gtk.h>

// Makes the page's store, or fills it anew.
void BuildLogLevelStore();

// Makes the row for the setting's level the active one, the first row when there is none.
void SelectLogLevel(GtkWidget *combo);

// "changed" handler: stores the chosen level as the setting.
void OnLogLevelChanged();
