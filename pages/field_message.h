// Messages about a field of a page.
#pragma once

#include <gtk/gtk.h>

// A text of section Message.
struct FieldMessage {
  const char *key, *english;
};

// Shows the message and then turns to the page that the field is on: OK checks its fields while
// another page may be showing, and the fault must be on the screen. False when the field is gone
// afterwards, since its window can be destroyed from outside while the message is open.
bool ShowFieldMessage(GtkWidget *field, const FieldMessage &message);
