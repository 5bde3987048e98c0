// The Log Level: a combo box of three fixed rows.
#pragma once

#include <gtk/gtk.h>

// The combo box over the store; no row is chosen yet.
GtkWidget *NewLogLevelCombo(GtkListStore *store);

// Makes the row for the setting's level the active one, the first row when there is none.
void SelectLogLevel(GtkWidget *combo);
