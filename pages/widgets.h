// The widgets that the pages, the group dialog and the main window are made of. Each is built with
// the borders, spacings and packing that they have in common, shown, and owned by the box it is put
// into.
#pragma once

#include <gtk/gtk.h>

#include "text/heap_text.h"

// A frame of at least this size, in pixels. Returns the row inside it; the frame is its parent.
GtkWidget *AddFrame(GtkWidget *page, const HeapText &title, int width, int height);

// Packs `box` into `page`, which it shares with other parts of the page.
GtkWidget *AddBox(GtkWidget *page, GtkWidget *box);

// One column of a form, whose fields share its height.
GtkWidget *AddColumn(GtkWidget *row, guint padding);

void AddField(GtkWidget *column, GtkWidget *field);

// An entry for at most `limit` characters.
GtkEntry *AddEntry(GtkWidget *column, int limit);

// The entry inside a combo box that has one.
GtkEntry *EntryOf(GtkWidget *combo);

// A label that names `field` to assistive tools, on the widget that receives the focus: for a combo
// box with an entry that is the entry inside it.
GtkWidget *AddLabel(GtkWidget *column, GtkWidget *field, const HeapText &text);

// Packs `button_box` into `box`, with the spacings and the smallest button size that all button
// boxes have.
void AddButtonBox(GtkWidget *box, GtkWidget *button_box, GtkButtonBoxStyle layout);

// The handler is connected swapped and takes no arguments.
GtkWidget *AddButton(GtkWidget *button_box, const HeapText &label, GCallback on_clicked);

// Makes the mouse wheel over the closed combo box change nothing; otherwise scrolling past it would
// change a setting unnoticed.
void IgnoreWheel(GtkWidget *combo);

// Whether a full field answers the key with a message: it does so for every key except those that
// shorten its text, so for Tab, Enter and the arrows too.
bool IsRefusedWhenFull(const GdkEventKey *event);

// Moves the keyboard focus to the field unless the field has it: focusing it anew would select all
// of its text, and the next key would replace that.
void FocusUnselected(GtkWidget *field);
