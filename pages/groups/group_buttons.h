// What the buttons of the Groups page do: the two for the source of the groups, and those that
// change the list. All are "clicked" handlers.
#pragma once

// Set GetGroupsFromDHCP to what is chosen; the list can be changed only while the groups are
// static.
void OnDhcpClicked();
void OnStaticClicked();

// Change the list, and make the setting PreAssignGroups anew. Edit and Delete are about the
// selected row; when there is none, they tell the user and change nothing.
void OnAddClicked();
void OnEditClicked();
void OnDeleteClicked();
