// The list of static groups.
#include "pages/groups/group_list.h"

#include "settings/agent_settings.h"
#include "text/heap_text.h"

namespace {

GtkListStore *group_list = nullptr;

GtkTreeIter IterAt(std::size_t index) {
  GtkTreeIter iter;
  gtk_tree_model_iter_nth_child(GroupList(), &iter, nullptr, static_cast<gint>(index));
  return iter;
}

std::string TextAt(GtkTreeIter *iter, GroupColumn column) {
  gchar *text = nullptr;
  gtk_tree_model_get(GroupList(), iter, column, &text, -1);
  return HeapText::Adopt(text).OrEmpty();
}

void SetRow(GtkTreeIter *iter, const GroupRow &row) {
  gtk_list_store_set(group_list, iter, kGroupNameColumn, row.name.c_str(), kGroupValueColumn,
                     row.value.c_str(), -1);
}

}  // namespace

void CreateGroupList() {
  group_list = gtk_list_store_new(kGroupColumns, G_TYPE_STRING, G_TYPE_STRING);
}

GtkTreeModel *GroupList() {
  return GTK_TREE_MODEL(group_list);
}

std::vector<GroupRow> GroupRows() {
  std::vector<GroupRow> rows;
  GtkTreeIter iter;
  for (gboolean more = gtk_tree_model_get_iter_first(GroupList(), &iter); more == TRUE;
       more = gtk_tree_model_iter_next(GroupList(), &iter)) {
    rows.push_back({TextAt(&iter, kGroupNameColumn), TextAt(&iter, kGroupValueColumn)});
  }
  return rows;
}

void AppendGroup(const GroupRow &row) {
  GtkTreeIter iter;
  gtk_list_store_append(group_list, &iter);
  SetRow(&iter, row);
}

void ReplaceGroup(std::size_t index, const GroupRow &row) {
  GtkTreeIter iter = IterAt(index);
  SetRow(&iter, row);
}

void RemoveGroup(std::size_t index) {
  GtkTreeIter iter = IterAt(index);
  gtk_list_store_remove(group_list, &iter);
}

void ParseGroupsValue() {
  for (const GroupRow &row : ParseGroups(agent_settings[PreAssignGroups].OrEmpty())) {
    AppendGroup(row);
  }
}

void BuildGroupsValue() {
  agent_settings[PreAssignGroups] = FormatGroups(GroupRows());
}
