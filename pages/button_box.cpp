// The toolkit calls this deprecated in favour of a theme property, which a program cannot set for
// one box: so this file alone sees the deprecated declarations.
#undef GTK_DISABLE_DEPRECATED

#include "pages/button_box.h"

void SetMinimumButtonSize(GtkWidget *box, int width, int height) {
  gtk_button_box_set_child_size(GTK_BUTTON_BOX(box), width, height);
}
