// What the buttons of the Groups page do.
#include "pages/groups/group_buttons.h"

#include <vector>

#include "pages/groups/group_dialog.h"
#include "pages/groups/group_list.h"
#include "pages/groups/groups_page_widgets.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

namespace {

// A radio button is also "clicked" when the other one becomes active.
void ChooseSource(GtkWidget *clicked, bool list_can_be_changed, const char *setting) {
  if (gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(clicked)) == TRUE) {
    gtk_widget_set_sensitive(groups_page.frame, list_can_be_changed ? TRUE : FALSE);
    agent_settings[GetGroupsFromDHCP] = HeapText::Copy(setting);
  }
}

// Does nothing if the window was destroyed while a dialog was open.
void SetListModel(GtkTreeModel *model) {
  if (groups_page.box != nullptr) {
    gtk_tree_view_set_model(GTK_TREE_VIEW(groups_page.list_view), model);
  }
}

// Shows the list after a change, and makes the setting anew.
void TakeList() {
  SetListModel(nullptr);
  SetListModel(GroupList());
  BuildGroupsValue();
}

// The indexes of the selected rows: one at most, as the list is built.
std::vector<std::size_t> SelectedRows() {
  std::vector<std::size_t> rows;
  GList *paths = gtk_tree_selection_get_selected_rows(
      gtk_tree_view_get_selection(GTK_TREE_VIEW(groups_page.list_view)), nullptr);
  for (const GList *path = paths; path != nullptr; path = path->next) {
    rows.push_back(static_cast<std::size_t>(
        *gtk_tree_path_get_indices(static_cast<GtkTreePath *>(path->data))));
  }
  g_list_free_full(paths,
                   [](gpointer path) { gtk_tree_path_free(static_cast<GtkTreePath *>(path)); });
  return rows;
}

}  // namespace

void OnDhcpClicked() {
  ChooseSource(groups_page.dhcp_button, false, "1");
}

void OnStaticClicked() {
  ChooseSource(groups_page.static_button, true, "0");
}

void OnAddClicked() {
  RunGroupDialog(kAddGroup);
  TakeList();  // also after a cancel, when the setting comes out the same
}

void OnEditClicked() {
  const std::vector<std::size_t> selected = SelectedRows();
  if (selected.empty()) {
    ShowMessage(
        ShownText("Message", "Msg_PageGroups_Edit_Err", "Please select a group to edit.").Get());
    return;
  }
  if (GroupDialogIsOpen()) {
    return;  // it keeps the row that it was opened for
  }
  const GroupRow row = GroupRows()[selected.back()];
  edited_group_name = row.name;
  edited_group_value = row.value;
  RunGroupDialog(kEditGroup);
  TakeList();
}

void OnDeleteClicked() {
  const std::vector<std::size_t> selected = SelectedRows();
  if (selected.empty()) {
    ShowMessage(
        ShownText("Message", "Msg_PageGroups_Del_Err", "Please select the group(s) to delete.")
            .Get());
    return;
  }
  SetListModel(nullptr);  // the view follows at the end, not row by row
  for (const std::size_t row : selected) {
    RemoveGroup(row);
  }
  TakeList();
}
