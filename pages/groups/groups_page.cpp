// The second page of the notebook, built from top to bottom.
#include "pages/groups/groups_page.h"

#include <vector>

#include "pages/groups/group_dialog.h"
#include "pages/groups/group_list.h"
#include "pages/groups/group_rules.h"
#include "pages/widgets.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

GroupsPage groups_page;

namespace {

HeapText GroupsText(const char *key, const char *english) {
  return ShownText("Page_Groups", key, english);
}

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

void OnDhcpClicked() {
  ChooseSource(groups_page.dhcp_button, false, "1");
}

void OnStaticClicked() {
  ChooseSource(groups_page.static_button, true, "0");
}

void OnAddClicked() {
  RunGroupDialog(kAddGroup);
  TakeList();  // also after a cancel: the text is made anew, and may take another form
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

GtkWidget *AddRadioButton(GtkWidget *box, GtkWidget *group, const HeapText &label,
                          void (*on_clicked)()) {
  GtkWidget *button =
      gtk_radio_button_new_with_label_from_widget(GTK_RADIO_BUTTON(group), label.Get());
  g_signal_connect_swapped(button, "clicked", G_CALLBACK(on_clicked), nullptr);
  AddField(box, button);
  return button;
}

void AddRadioButtons() {
  GtkWidget *box = AddBox(groups_page.box, gtk_vbox_new(FALSE, 10));
  groups_page.dhcp_button = AddRadioButton(
      box, nullptr, GroupsText("Radio_DHCPGroups", "Get Pre-Assign Groups from DHCP Tag"),
      OnDhcpClicked);
  groups_page.static_button =
      AddRadioButton(box, groups_page.dhcp_button,
                     GroupsText("Radio_StaticGroups", "Use Static Custom Groups"), OnStaticClicked);
}

// What the model holds is not always UTF-8.
void ShowCell(GtkTreeViewColumn *, GtkCellRenderer *cell, GtkTreeModel *model, GtkTreeIter *row,
              gpointer column) {
  gchar *bytes = nullptr;
  gtk_tree_model_get(model, row, GPOINTER_TO_INT(column), &bytes, -1);
  const HeapText owner = HeapText::Adopt(bytes);
  g_object_set(cell, "text", ShowableBytes(owner.OrEmpty()).Get(), nullptr);
}

void AddListColumn(GtkCellRenderer *cell, GroupColumn shown, const HeapText &title) {
  GtkTreeViewColumn *column = gtk_tree_view_column_new();
  gtk_tree_view_column_set_title(column, title.Get());
  gtk_tree_view_column_pack_start(column, cell, TRUE);
  gtk_tree_view_column_set_cell_data_func(column, cell, ShowCell, GINT_TO_POINTER(shown), nullptr);
  gtk_tree_view_column_set_alignment(column, 0.0F);
  gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
  gtk_tree_view_column_set_fixed_width(column, 135);
  gtk_tree_view_column_set_resizable(column, TRUE);
  gtk_tree_view_append_column(GTK_TREE_VIEW(groups_page.list_view), column);
}

// For assistive tools; both can have the focus.
void NameAsTheFrame(GtkWidget *widget) {
  atk_object_set_name(gtk_widget_get_accessible(widget),
                      gtk_frame_get_label(GTK_FRAME(groups_page.frame)));
}

void AddList(GtkWidget *row) {
  GtkWidget *scrolled = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_AUTOMATIC,
                                 GTK_POLICY_AUTOMATIC);
  gtk_widget_set_size_request(scrolled, 300, 200);
  CreateGroupList();
  groups_page.list_view = gtk_tree_view_new_with_model(GroupList());
  NameAsTheFrame(scrolled);
  NameAsTheFrame(groups_page.list_view);
  gtk_scrolled_window_add_with_viewport(GTK_SCROLLED_WINDOW(scrolled), groups_page.list_view);
  ParseGroupsValue();
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();  // one for both columns
  AddListColumn(cell, kGroupNameColumn, GroupsText("TreeView_Col1", "Group Name"));
  AddListColumn(cell, kGroupValueColumn, GroupsText("TreeView_Col2", "Value"));
  gtk_box_pack_start(GTK_BOX(row), scrolled, TRUE, TRUE, 0);
  gtk_widget_show_all(scrolled);
}

void AddListButtons(GtkWidget *row) {
  GtkWidget *buttons = gtk_vbutton_box_new();
  AddButtonBox(row, buttons, GTK_BUTTONBOX_SPREAD);
  AddButton(buttons, GroupsText("Button_Add", "Add..."), G_CALLBACK(OnAddClicked));
  AddButton(buttons, GroupsText("Button_Edit", "Edit..."), G_CALLBACK(OnEditClicked));
  AddButton(buttons, GroupsText("Button_Delete", "Delete"), G_CALLBACK(OnDeleteClicked));
}

// A click, because making the active radio button active would run no handler.
void ClickStoredSource() {
  const char *setting = agent_settings[GetGroupsFromDHCP].Get();
  gtk_button_clicked(
      GTK_BUTTON(WantsDhcpGroups(setting) ? groups_page.dhcp_button : groups_page.static_button));
}

}  // namespace

void BuildGroupsPage() {
  groups_page.box = gtk_vbox_new(FALSE, 0);
  g_signal_connect(groups_page.box, "destroy", G_CALLBACK(gtk_widget_destroyed), &groups_page.box);
  AddRadioButtons();
  GtkWidget *row =
      AddFrame(groups_page.box, GroupsText("Frame_StaticGroups", "Static Custom Groups"), 400, 200);
  groups_page.frame = gtk_widget_get_parent(row);
  AddList(row);
  AddListButtons(row);
  ClickStoredSource();
  gtk_widget_show(groups_page.box);
}

GtkWidget *GroupsPageWidget() {
  return groups_page.box;
}
