// What the pages do for people who use a keyboard, a screen reader or a shaky wheel. Nothing of it
// changes how a page looks.
#pragma once

#include <gtk/gtk.h>

// Makes `label` name `field` to assistive tools, on the widget that receives the focus: for a combo
// box with an entry that is the entry inside it.
void LabelField(GtkWidget *label, GtkWidget *field);

// The mouse wheel over the closed combo box changes nothing; a wheel that scrolls past it would
// otherwise change a setting unseen.
void IgnoreWheel(GtkWidget *combo);
