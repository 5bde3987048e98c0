#include "pages/ok_button.h"

namespace {
GtkWidget *ok_button = nullptr;
}  // namespace

void SetOkButton(GtkWidget *button) {
  ok_button = button;
}

void FocusOkButton() {
  if (ok_button != nullptr) {
    gtk_widget_grab_focus(ok_button);
  }
}
