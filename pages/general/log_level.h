// The Log Level: a combo box of three fixed rows.
#pragma once

#include <gtk/gtk.h>

// A combo box that shows the store. No row is active yet.
GtkWidget *NewLogLevelCombo(GtkListStore *store);

// Makes the row for the setting's level the active one, the first row when there is none.
void SelectLogLevel(GtkWidget *combo);
