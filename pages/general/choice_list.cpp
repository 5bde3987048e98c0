// The rows under the page's combo boxes.
#include "pages/general/choice_list.h"

#include "pages/general/typed_duration.h"
#include "text/shown_text.h"

namespace {

int NumberAt(GtkTreeModel *rows, GtkTreeIter *row) {
  int number = 0;
  gtk_tree_model_get(rows, row, kNumberColumn, &number, -1);
  return number;
}

HeapText TextAt(GtkTreeModel *rows, GtkTreeIter *row) {
  gchar *text = nullptr;
  gtk_tree_model_get(rows, row, kShownColumn, &text, -1);
  return HeapText::Adopt(text);
}

}  // namespace

void BuildChoices(GtkListStore *&store, Choices rows) {
  if (store == nullptr) {
    store = gtk_list_store_new(kChoiceColumns, G_TYPE_INT, G_TYPE_STRING);
  }
  gtk_list_store_clear(store);
  for (const Choice &row : rows) {
    AppendChoice(store, row.number, ShownText("Page_General", row.key, row.english).OrEmpty());
  }
}

void AppendChoice(GtkListStore *store, int number, const std::string &text) {
  gtk_list_store_insert_with_values(store, nullptr, -1, kNumberColumn, number, kShownColumn,
                                    text.c_str(), -1);
}

bool SelectNumber(GtkWidget *combo, int number) {
  GtkTreeModel *rows = gtk_combo_box_get_model(GTK_COMBO_BOX(combo));
  GtkTreeIter row;
  gboolean more = gtk_tree_model_get_iter_first(rows, &row);
  while (more == TRUE && NumberAt(rows, &row) != number) {
    more = gtk_tree_model_iter_next(rows, &row);
  }
  if (more == TRUE) {
    gtk_combo_box_set_active_iter(GTK_COMBO_BOX(combo), &row);
  }
  return more == TRUE;
}

std::optional<int> NumberNamed(GtkListStore *store, const std::string &typed) {
  GtkTreeModel *rows = GTK_TREE_MODEL(store);
  GtkTreeIter row;
  for (gboolean more = gtk_tree_model_get_iter_first(rows, &row); more == TRUE;
       more = gtk_tree_model_iter_next(rows, &row)) {
    const int number = NumberAt(rows, &row);
    if (NamesRow(typed, TextAt(rows, &row).OrEmpty(), number)) {
      return number;
    }
  }
  return std::nullopt;
}

HeapText ActiveNumber(GtkWidget *combo) {
  GtkTreeIter row;
  if (gtk_combo_box_get_active_iter(GTK_COMBO_BOX(combo), &row) == FALSE) {
    return HeapText();
  }
  GtkTreeModel *rows = gtk_combo_box_get_model(GTK_COMBO_BOX(combo));
  return HeapText::Copy(std::to_string(NumberAt(rows, &row)));
}
