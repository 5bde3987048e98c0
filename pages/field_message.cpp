// Messages about a field of a page.
#include "pages/field_message.h"

#include "text/message_dialogs.h"
#include "text/shown_text.h"

namespace {

void TurnToPageOf(GtkWidget *field) {
  GtkWidget *notebook = gtk_widget_get_ancestor(field, GTK_TYPE_NOTEBOOK);
  GtkWidget *page = field;
  while (gtk_widget_get_parent(page) != notebook) {
    page = gtk_widget_get_parent(page);
  }
  gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook),
                                gtk_notebook_page_num(GTK_NOTEBOOK(notebook), page));
}

}  // namespace

bool ShowFieldMessage(GtkWidget *field, const FieldMessage &message) {
  g_signal_connect(field, "destroy", G_CALLBACK(gtk_widget_destroyed), &field);
  ShowMessage(ShownText("Message", message.key, message.english).Get());
  if (field == nullptr) {
    return false;
  }
  g_signal_handlers_disconnect_by_func(field, reinterpret_cast<gpointer>(gtk_widget_destroyed),
                                       &field);
  TurnToPageOf(field);
  return true;
}
