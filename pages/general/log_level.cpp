// The Log Level: a combo box of three fixed rows.
#include "pages/general/log_level.h"

#include "pages/general/choice_list.h"
#include "settings/agent_settings.h"

GtkWidget *NewLogLevelCombo(GtkListStore *store) {
  GtkWidget *combo = gtk_combo_box_new_with_model(GTK_TREE_MODEL(store));
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();
  gtk_cell_layout_pack_start(GTK_CELL_LAYOUT(combo), cell, TRUE);
  gtk_cell_layout_add_attribute(GTK_CELL_LAYOUT(combo), cell, "text", kShownColumn);
  return combo;
}

void SelectLogLevel(GtkWidget *combo) {
  const int level = StoredNumber(agent_settings[LogLevel].Get(), 0).value_or(0);
  if (!SelectNumber(combo, level)) {
    gtk_combo_box_set_active(GTK_COMBO_BOX(combo), 0);
  }
}
