// What the buttons of the Groups page do: the two for the source of the groups, and those that
// change the list. All are "clicked" handlers.
#pragma once

// Make the setting GetGroupsFromDHCP what is chosen; the list can be changed only while the groups
// are static.
void OnDhcpClicked();
void OnStaticClicked();

// Change the list, by the group dialog or by what is selected, and make the setting PreAssignGroups
// anew. Edit and Delete tell the user when nothing is selected, and change nothing then.
void OnAddClicked();
void OnEditClicked();
void OnDeleteClicked();
