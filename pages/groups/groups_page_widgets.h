// The Groups page's widgets, for the files of this folder.
#pragma once

#include <gtk/gtk.h>

// In the order of the screen; borrowed from their parents. All null before the page is built, and
// `box` again once it was destroyed, and all other widgets with it.
struct GroupsPage {
  GtkWidget *box = nullptr;
  GtkWidget *dhcp_button = nullptr;
  GtkWidget *static_button = nullptr;
  GtkWidget *frame = nullptr;  // around the list and its buttons
  GtkWidget *list_view = nullptr;
};
extern GroupsPage groups_page;
