// The Groups page's widgets, for the files of this folder.
#pragma once

#include <gtk/gtk.h>

// In the order of the screen; borrowed from their parents. All are null before the page is built.
// When it is destroyed `box` becomes null again, and the other widgets must not be used any more.
struct GroupsPage {
  GtkWidget *box = nullptr;
  GtkWidget *dhcp_button = nullptr;
  GtkWidget *static_button = nullptr;
  GtkWidget *frame = nullptr;  // around the list and its buttons
  GtkWidget *list_view = nullptr;
};
extern GroupsPage groups_page;
