// From the page's widgets to the settings on OK, and the refresh of the current gateway.
#pragma once

#include <gtk/gtk.h>

#include "text/heap_text.h"

// The numbers by which ReadComboValue knows the combo boxes.
enum ComboKind { kPullInterval = 0, kLogLevel = 1, kDelayScope = 2 };

// Checks the combo box's typed text, which may show a message, and gives the active row's value in
// decimal. Null when the text is not valid.
HeapText ReadComboValue(GtkWidget *combo, GtkListStore *store, ComboKind kind);

// Makes settings 1 to 5 what the page shows. Returns 0, or 1 when a value was refused: the user has
// been told, the settings after it are as they were, and it is itself the wrong text when it is a
// gateway, absent when it is a duration. 1 too when the page was destroyed under a message.
int CollectGeneralSettings();

// While one of these lives, the refresh leaves the setting alone: what OK has collected is what it
// saves, however long its messages stay open.
class RefreshHold {
 public:
  RefreshHold();
  ~RefreshHold();
  RefreshHold(const RefreshHold &) = delete;
  RefreshHold &operator=(const RefreshHold &) = delete;
};

// Timer callback: makes the setting CurrentGateway what the registry holds, when it can be read. In
// memory only: the entry, into which the user may be typing, stays as it is. Always true, to be
// called again.
gboolean RefreshCurrentGateway(gpointer);
