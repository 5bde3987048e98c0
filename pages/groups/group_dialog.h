// The modal dialog in which the user adds a group to the list or edits one.
#pragma once

#include <string>

enum GroupMode { kAddGroup, kEditGroup };

// The row to edit. The page sets them right before it runs the dialog in edit mode, and never while
// one is open.
extern std::string edited_group_name;
extern std::string edited_group_value;

// Runs the dialog until its input is accepted, which changes the list of groups, or until it is
// dismissed, which does not. The stored text is left to the caller. Does nothing while the dialog
// is open already.
void RunGroupDialog(GroupMode mode);

// For the page's buttons, which assistive tools can press behind the open dialog.
bool GroupDialogIsOpen();

// Checks the input in the open dialog and tells the user the first fault. Returns -1 for a fault of
// the name, 0 for one of the value, 1 when there is none.
int ValidateGroup(GroupMode mode);
