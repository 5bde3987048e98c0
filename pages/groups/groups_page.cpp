#include "pages/groups/groups_page.h"

#include <vector>

#include "pages/accessible.h"
#include "pages/button_box.h"
#include "pages/groups/group_dialog.h"
#include "pages/groups/group_list.h"
#include "pages/groups/group_rules.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/to_utf8.h"

namespace {

// In the order of the screen; borrowed from their parents.
struct GroupsPage {
  GtkWidget *box;
  GtkWidget *dhcp_button;
  GtkWidget *static_button;
  GtkWidget *frame;
  GtkWidget *list_view;
};
GroupsPage groups_page;

bool IsActive(GtkWidget *button) {
  return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(button)) == TRUE;
}

// A radio button is clicked also when it is the other one that becomes active.
void OnDhcpClicked() {
  if (IsActive(groups_page.dhcp_button)) {
    gtk_widget_set_sensitive(groups_page.frame, FALSE);
    agent_settings[GetGroupsFromDHCP] = HeapText::Copy("1");
  }
}

void OnStaticClicked() {
  if (IsActive(groups_page.static_button)) {
    gtk_widget_set_sensitive(groups_page.frame, TRUE);
    agent_settings[GetGroupsFromDHCP] = HeapText::Copy("0");
  }
}

// Null after the window was destroyed while a dialog was open.
void SetListModel(GtkTreeModel *model) {
  if (groups_page.list_view != nullptr) {
    gtk_tree_view_set_model(GTK_TREE_VIEW(groups_page.list_view), model);
  }
}

void AttachList() {
  SetListModel(GroupList());
}

void DetachList() {
  SetListModel(nullptr);
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

void OnAddClicked() {
  RunGroupDialog(kAddGroup);
  DetachList();
  AttachList();
  BuildGroupsValue();  // also after a cancel, when the text comes out the same
}

void OnEditClicked() {
  const std::vector<std::size_t> selected = SelectedRows();
  if (selected.empty()) {
    ShowMessage(
        ShownText("Please select a group to edit.", "Msg_PageGroups_Edit_Err", "Message").Get());
    return;
  }
  if (GroupDialogIsOpen()) {
    return;  // it keeps the row that it was opened for
  }
  const GroupRow row = GroupRows()[selected.back()];
  edited_group_name = row.name;
  edited_group_value = row.value;
  RunGroupDialog(kEditGroup);
  DetachList();
  AttachList();
  BuildGroupsValue();
}

void OnDeleteClicked() {
  const std::vector<std::size_t> selected = SelectedRows();
  if (selected.empty()) {
    ShowMessage(
        ShownText("Please select the group(s) to delete.", "Msg_PageGroups_Del_Err", "Message")
            .Get());
    return;
  }
  DetachList();
  for (const std::size_t row : selected) {
    RemoveGroup(row);
  }
  AttachList();
  BuildGroupsValue();
}

GtkWidget *AddRadioButton(GtkWidget *box, GtkWidget *group, const HeapText &label,
                          void (*handler)()) {
  GtkWidget *button =
      gtk_radio_button_new_with_label_from_widget(GTK_RADIO_BUTTON(group), label.Get());
  g_signal_connect_swapped(button, "clicked", G_CALLBACK(handler), nullptr);
  gtk_container_add(GTK_CONTAINER(box), button);
  gtk_widget_show(button);
  return button;
}

void AddRadioButtons() {
  GtkWidget *box = gtk_vbox_new(FALSE, 0);
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_box_pack_start(GTK_BOX(groups_page.box), box, TRUE, TRUE, 0);
  gtk_box_set_spacing(GTK_BOX(box), 10);
  groups_page.dhcp_button = AddRadioButton(
      box, nullptr,
      ShownText("Get Pre-Assign Groups from DHCP Tag", "Radio_DHCPGroups", "Page_Groups"),
      OnDhcpClicked);
  groups_page.static_button = AddRadioButton(
      box, groups_page.dhcp_button,
      ShownText("Use Static Custom Groups", "Radio_StaticGroups", "Page_Groups"), OnStaticClicked);
  gtk_widget_show(box);
}

// The box inside the frame.
GtkWidget *AddFrame() {
  GtkWidget *frame =
      gtk_frame_new(ShownText("Static Custom Groups", "Frame_StaticGroups", "Page_Groups").Get());
  gtk_container_set_border_width(GTK_CONTAINER(frame), 10);
  gtk_widget_set_size_request(frame, 400, 200);
  gtk_box_pack_start(GTK_BOX(groups_page.box), frame, TRUE, TRUE, 10);
  gtk_widget_show(frame);
  groups_page.frame = frame;
  GtkWidget *box = gtk_hbox_new(FALSE, 0);
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_container_add(GTK_CONTAINER(frame), box);
  gtk_widget_show(box);
  return box;
}

// What the model holds is not always UTF-8.
void ShowCell(GtkTreeViewColumn *, GtkCellRenderer *cell, GtkTreeModel *model, GtkTreeIter *row,
              gpointer column) {
  gchar *bytes = nullptr;
  gtk_tree_model_get(model, row, GPOINTER_TO_INT(column), &bytes, -1);
  const HeapText owner = HeapText::Adopt(bytes);
  g_object_set(cell, "text", ShowableBytes(owner.OrEmpty()).Get(), nullptr);
}

void AddColumn(GtkCellRenderer *cell, GroupColumn shown, const HeapText &title) {
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

void AddList(GtkWidget *box) {
  GtkWidget *scrolled = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_AUTOMATIC,
                                 GTK_POLICY_AUTOMATIC);
  gtk_widget_set_size_request(scrolled, 300, 200);
  CreateGroupList();
  groups_page.list_view = gtk_tree_view_new();
  g_signal_connect(groups_page.list_view, "destroy", G_CALLBACK(gtk_widget_destroyed),
                   &groups_page.list_view);
  NameAsTheFrame(scrolled);
  NameAsTheFrame(groups_page.list_view);
  gtk_scrolled_window_add_with_viewport(GTK_SCROLLED_WINDOW(scrolled), groups_page.list_view);
  AttachList();
  ParseGroupsValue();
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();  // one for both columns
  AddColumn(cell, kNameColumn, ShownText("Group Name", "TreeView_Col1", "Page_Groups"));
  AddColumn(cell, kValueColumn, ShownText("Value", "TreeView_Col2", "Page_Groups"));
  gtk_box_pack_start(GTK_BOX(box), scrolled, TRUE, TRUE, 0);
  gtk_widget_show_all(scrolled);
}

void AddButton(GtkWidget *box, const HeapText &label, void (*handler)()) {
  GtkWidget *button = gtk_button_new_with_label(label.Get());
  g_signal_connect_swapped(button, "clicked", G_CALLBACK(handler), nullptr);
  gtk_container_add(GTK_CONTAINER(box), button);
  gtk_widget_show(button);
}

void AddButtons(GtkWidget *box) {
  GtkWidget *buttons = gtk_vbutton_box_new();
  gtk_container_set_border_width(GTK_CONTAINER(buttons), 5);
  gtk_box_pack_start(GTK_BOX(box), buttons, TRUE, TRUE, 10);
  gtk_button_box_set_layout(GTK_BUTTON_BOX(buttons), GTK_BUTTONBOX_SPREAD);
  gtk_box_set_spacing(GTK_BOX(buttons), 10);
  SetMinimumButtonSize(buttons, 85, 20);
  AddButton(buttons, ShownText("Add...", "Button_Add", "Page_Groups"), OnAddClicked);
  AddButton(buttons, ShownText("Edit...", "Button_Edit", "Page_Groups"), OnEditClicked);
  AddButton(buttons, ShownText("Delete", "Button_Delete", "Page_Groups"), OnDeleteClicked);
  gtk_widget_show(buttons);
}

// A click, because making the active radio button active would run no handler.
void ChooseSource() {
  gtk_button_clicked(GTK_BUTTON(WantsDhcpGroups(agent_settings[GetGroupsFromDHCP].Get())
                                    ? groups_page.dhcp_button
                                    : groups_page.static_button));
}

}  // namespace

void BuildGroupsPage() {
  groups_page.box = gtk_vbox_new(FALSE, 0);
  AddRadioButtons();
  GtkWidget *static_groups = AddFrame();
  AddList(static_groups);
  AddButtons(static_groups);
  ChooseSource();
  gtk_widget_show(groups_page.box);
}

GtkWidget *GroupsPageWidget() {
  return groups_page.box;
}
