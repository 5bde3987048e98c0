// From the General page's widgets to the settings, on OK.
#pragma once

#include <gtk/gtk.h>

#include "text/heap_text.h"

// The numbers by which ReadComboValue knows the combo boxes.
enum ComboKind { kPullInterval = 0, kLogLevel = 1, kDelayScope = 2 };

// Checks the typed text of a duration, which may show a message, and gives the active row's number
// in decimal. Null when the text is not valid. The store is the combo box's own.
HeapText ReadComboValue(GtkWidget *combo, GtkListStore *store, ComboKind kind);

// Sets the settings from CurrentGateway to DelayScope_min to what the page shows. Returns 0, or 1
// when a value was refused: the user has been told, and the settings after it are as they were. A
// refused gateway is stored as it was typed, without blanks at its ends; for a refused duration the
// setting is absent. Also returns 1 when the page was destroyed in the meantime.
int CollectGeneralSettings();
