// The second page of the notebook: where the agent takes its groups from, and the list of the
// static ones. It keeps the settings GetGroupsFromDHCP and PreAssignGroups current while the user
// works.
#pragma once

#include <gtk/gtk.h>

// Builds the page, once, after the settings and the string table were loaded.
void BuildGroupsPage();

// The built page. The notebook that it is put into owns it.
GtkWidget *GroupsPageWidget();
