// The list of static groups that the page shows and the dialog changes. Once it is filled, the
// setting PreAssignGroups follows it: BuildGroupsValue makes the setting anew after every change.
#pragma once

#include <gtk/gtk.h>

#include <vector>

#include "pages/groups/groups_value.h"

// The columns of the model, all texts, held exactly as they are stored: not always UTF-8.
enum GroupColumn { kGroupNameColumn, kGroupValueColumn, kGroupColumns };

// Makes the list, empty. Called once, before anything else here.
void CreateGroupList();

// The model behind the list; it lives as long as the program.
GtkTreeModel *GroupList();

// All rows, in their order.
std::vector<GroupRow> GroupRows();

void AppendGroup(const GroupRow &row);

// `index` is that of an existing row, counted from 0.
void ReplaceGroup(std::size_t index, const GroupRow &row);
void RemoveGroup(std::size_t index);

// Appends to the list what the setting PreAssignGroups holds; the setting stays as it is.
void ParseGroupsValue();

// Replaces the setting PreAssignGroups with the text for the list; absent when the list is empty.
void BuildGroupsValue();
