// The two message dialogs.
#include "text/message_dialogs.h"

#include <gtk/gtk.h>

// The texts are the formats themselves, and the tables are written for that: a percent sign in one
// would be taken as a conversion, so the check of the translations refuses it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace {

GtkWidget *NewMessage(GtkMessageType type, const char *text) {
  GtkWidget *dialog = gtk_message_dialog_new(nullptr, GTK_DIALOG_DESTROY_WITH_PARENT, type,
                                             GTK_BUTTONS_CLOSE, text);
  gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
  gtk_window_set_position(GTK_WINDOW(dialog), GTK_WIN_POS_CENTER);
  return dialog;
}

// Held, because another program of the X server can destroy its window while it is open.
void RunAndDestroy(GtkWidget *dialog) {
  g_object_ref(dialog);
  gtk_dialog_run(GTK_DIALOG(dialog));
  gtk_widget_destroy(dialog);
  g_object_unref(dialog);
}

}  // namespace

void ShowMessage(const char *text) {
  RunAndDestroy(NewMessage(GTK_MESSAGE_ERROR, text));
}

void ShowInfoMessage(const char *primary, const char *secondary) {
  // An information icon under the headline "Warning" is meant: nothing has gone wrong.
  GtkWidget *dialog = NewMessage(GTK_MESSAGE_INFO, primary);
  gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), secondary);
  RunAndDestroy(dialog);
}

#pragma GCC diagnostic pop
