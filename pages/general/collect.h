// From the General page's widgets to the settings, on OK.
#pragma once

#include <gtk/gtk.h>

#include "text/heap_text.h"

// The numbers by which ReadComboValue knows the combo boxes.
enum ComboKind { kPullInterval = 0, kLogLevel = 1, kDelayScope = 2 };

// Checks the typed text of a duration, which may show a message, and gives the active row's number
// in decimal. Null when the text is not valid. `store` is the one under the combo box.
HeapText ReadComboValue(GtkWidget *combo, GtkListStore *store, ComboKind kind);

// Makes settings 1 to 5 what the page shows. Returns 0, or 1 when a value was refused: the user has
// been told, the settings after it are as they were, and it is itself the wrong text when it is a
// gateway, absent when it is a duration. 1 too when the page was destroyed while a message was
// open.
int CollectGeneralSettings();
