// The General page's widgets, for the files of this folder.
#pragma once

#include <gtk/gtk.h>

#include "pages/general/duration_field.h"

// In the order of the screen; the widgets are borrowed from their parents, the stores are the
// page's own for the life of the program. All are null before the page is built. When it is
// destroyed `box` becomes null again, and the other widgets must not be used any more.
struct GeneralPage {
  GtkWidget *box = nullptr;
  GtkEntry *current_gateway = nullptr;
  GtkEntry *backup_gateway = nullptr;
  DurationField pull_interval = {kPullIntervalKind};
  GtkWidget *log_level = nullptr;  // combo box
  GtkListStore *log_level_store = nullptr;
  DurationField delay_scope = {kDelayScopeKind};
};
extern GeneralPage general_page;

// Shows a message about a field and then turns to the page: OK checks its fields while the other
// page may be showing, and the fault must be on the screen. False when the page is gone afterwards,
// since its window can be destroyed from outside while the message is open.
bool ShowFieldMessage(const FieldMessage &message);
