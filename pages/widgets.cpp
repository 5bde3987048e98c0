// The widgets that the pages, the group dialog and the main window are made of.

// For gtk_button_box_set_child_size alone: the toolkit calls it deprecated in favour of a theme
// property, which a program cannot set for one box.
#undef GTK_DISABLE_DEPRECATED

#include "pages/widgets.h"

#include <gdk/gdkkeysyms.h>

namespace {

// Also called for the entry and the arrow inside the combo box.
gboolean OnScroll() {
  return TRUE;
}

}  // namespace

GtkWidget *AddFrame(GtkWidget *page, const HeapText &title, int width, int height) {
  GtkWidget *frame = gtk_frame_new(title.Get());
  gtk_container_set_border_width(GTK_CONTAINER(frame), 10);
  gtk_widget_set_size_request(frame, width, height);
  gtk_box_pack_start(GTK_BOX(page), frame, TRUE, TRUE, 10);
  gtk_widget_show(frame);
  GtkWidget *row = gtk_hbox_new(FALSE, 0);
  gtk_container_set_border_width(GTK_CONTAINER(row), 5);
  AddField(frame, row);
  return row;
}

GtkWidget *AddBox(GtkWidget *page, GtkWidget *box) {
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_box_pack_start(GTK_BOX(page), box, TRUE, TRUE, 0);
  gtk_widget_show(box);
  return box;
}

GtkWidget *AddColumn(GtkWidget *row, guint padding) {
  GtkWidget *column = gtk_vbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(column), 5);
  gtk_box_pack_start(GTK_BOX(row), column, TRUE, TRUE, padding);
  gtk_widget_show(column);
  return column;
}

void AddField(GtkWidget *column, GtkWidget *field) {
  gtk_container_add(GTK_CONTAINER(column), field);
  gtk_widget_show(field);
}

GtkEntry *AddEntry(GtkWidget *column, int limit) {
  GtkWidget *entry = gtk_entry_new();
  gtk_entry_set_max_length(GTK_ENTRY(entry), limit);
  AddField(column, entry);
  return GTK_ENTRY(entry);
}

GtkEntry *EntryOf(GtkWidget *combo) {
  return GTK_ENTRY(gtk_bin_get_child(GTK_BIN(combo)));
}

GtkWidget *AddLabel(GtkWidget *column, GtkWidget *field, const HeapText &text) {
  GtkWidget *label = gtk_label_new(text.Get());
  gtk_label_set_mnemonic_widget(GTK_LABEL(label), field);
  if (GTK_IS_COMBO_BOX(field) && gtk_combo_box_get_has_entry(GTK_COMBO_BOX(field)) == TRUE) {
    atk_object_add_relationship(gtk_widget_get_accessible(GTK_WIDGET(EntryOf(field))),
                                ATK_RELATION_LABELLED_BY, gtk_widget_get_accessible(label));
  }
  AddField(column, label);
  return label;
}

void AddButtonBox(GtkWidget *box, GtkWidget *button_box, GtkButtonBoxStyle layout) {
  gtk_container_set_border_width(GTK_CONTAINER(button_box), 5);
  gtk_box_pack_start(GTK_BOX(box), button_box, TRUE, TRUE, 10);
  gtk_button_box_set_layout(GTK_BUTTON_BOX(button_box), layout);
  gtk_box_set_spacing(GTK_BOX(button_box), 10);
  gtk_button_box_set_child_size(GTK_BUTTON_BOX(button_box), 85, 20);
  gtk_widget_show(button_box);
}

GtkWidget *AddButton(GtkWidget *button_box, const HeapText &label, GCallback on_clicked) {
  GtkWidget *button = gtk_button_new_with_label(label.Get());
  g_signal_connect_swapped(button, "clicked", on_clicked, nullptr);
  AddField(button_box, button);
  return button;
}

void IgnoreWheel(GtkWidget *combo) {
  g_signal_connect_swapped(combo, "scroll-event", G_CALLBACK(OnScroll), nullptr);
}

bool IsRefusedWhenFull(const GdkEventKey *event) {
  return event->keyval != GDK_KEY_Delete && event->keyval != GDK_KEY_BackSpace;
}

void FocusUnselected(GtkWidget *field) {
  if (!gtk_widget_is_focus(field)) {
    gtk_widget_grab_focus(field);
  }
}
