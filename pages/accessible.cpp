#include "pages/accessible.h"

namespace {

// The entry inside a combo box that has one, else null.
GtkWidget *InnerEntry(GtkWidget *field) {
  return GTK_IS_COMBO_BOX(field) && gtk_combo_box_get_has_entry(GTK_COMBO_BOX(field)) == TRUE
             ? gtk_bin_get_child(GTK_BIN(field))
             : nullptr;
}

gboolean OnScroll() {
  return TRUE;
}

}  // namespace

void LabelField(GtkWidget *label, GtkWidget *field) {
  gtk_label_set_mnemonic_widget(GTK_LABEL(label), field);
  if (GtkWidget *entry = InnerEntry(field)) {
    atk_object_add_relationship(gtk_widget_get_accessible(entry), ATK_RELATION_LABELLED_BY,
                                gtk_widget_get_accessible(label));
  }
}

// What is turned over the entry or the arrow inside arrives here too.
void IgnoreWheel(GtkWidget *combo) {
  g_signal_connect_swapped(combo, "scroll-event", G_CALLBACK(OnScroll), nullptr);
}
