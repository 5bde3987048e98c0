// The General page's widgets, for the files of this folder.
#pragma once

#include <gtk/gtk.h>

// In the order of the screen; the widgets are borrowed from their parents, the stores are the
// page's own. All null before the page is built.
struct GeneralPage {
  GtkWidget *box;              // null again once it was destroyed, and all other widgets with it
  GtkWidget *current_gateway;  // entry
  GtkWidget *backup_gateway;   // entry
  GtkWidget *pull_interval;    // combo box with entry
  GtkListStore *pull_interval_store;
  GtkWidget *log_level;  // combo box
  GtkListStore *log_level_store;
  GtkWidget *delay_scope;  // combo box with entry
  GtkListStore *delay_scope_store;
};
extern GeneralPage general_page;

// The entry inside a combo box that has one.
inline GtkWidget *EntryOf(GtkWidget *combo) {
  return gtk_bin_get_child(GTK_BIN(combo));
}
