// The size of the buttons in the program's button boxes.
#pragma once

#include <gtk/gtk.h>

// Every button of `box` is at least this large, in pixels. Replaces the theme's own minimum.
void SetMinimumButtonSize(GtkWidget *box, int width, int height);
