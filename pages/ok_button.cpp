// The slot for the main window's OK button.
#include "pages/ok_button.h"

namespace {
GtkWidget *ok_button = nullptr;
}  // namespace

void SetOkButton(GtkWidget *button) {
  ok_button = button;
  g_signal_connect(button, "destroy", G_CALLBACK(gtk_widget_destroyed), &ok_button);
}

void FocusOkButton() {
  if (ok_button != nullptr) {
    gtk_widget_grab_focus(ok_button);
  }
}
