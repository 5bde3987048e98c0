// The second page of the notebook: where the agent takes its groups from, and the list of the
// static ones. It keeps the settings GetGroupsFromDHCP and PreAssignGroups current while the user
// works.
#pragma once

#include <gtk/gtk.h>

// The page's widgets, in the order of the screen; they are borrowed from their parents. All are
// null before the page is built. When it is destroyed `box` becomes null again, and the other
// widgets must not be used any more.
struct GroupsPage {
  GtkWidget *box = nullptr;
  GtkWidget *dhcp_button = nullptr;
  GtkWidget *static_button = nullptr;
  GtkWidget *frame = nullptr;  // around the list and its buttons
  GtkWidget *list_view = nullptr;
};
extern GroupsPage groups_page;

// Builds the page, once, after the settings and the string table were loaded.
void BuildGroupsPage();

// The built page. The notebook that it is put into owns it.
GtkWidget *GroupsPageWidget();
