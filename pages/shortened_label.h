// A label whose text comes from outside and must not make its window larger.
#pragma once

#include <gtk/gtk.h>

// Shows `text` (UTF-8) in a label somewhere inside the finished `page`, which then wants as much
// room as with the usual text. A text that needs more is cut at the end of its first line and
// shortened with an ellipsis; a tooltip and assistive tools then have all of it.
void ShowShortened(GtkWidget *page, GtkLabel *label, const char *text, const char *usual_text);
