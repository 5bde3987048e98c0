// The slot for the main window's OK button: the pages give it the keyboard focus, the window fills
// it. So the pages need to know nothing of the window.
#pragma once

#include <gtk/gtk.h>

// `button` stays the window's; the slot is empty again when it is destroyed.
void SetOkButton(GtkWidget *button);

// Moves the keyboard focus to the button; does nothing while the slot is empty.
void FocusOkButton();
