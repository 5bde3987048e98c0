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

// The button box gets the room, the layout and the smallest button size that all of them have.
void AddButtonBox(GtkWidget *box, GtkWidget *button_box, GtkButtonBoxStyle layout);

// The handler is connected swapped and takes no arguments.
GtkWidget *AddButton(GtkWidget *button_box, const HeapText &label, GCallback on_clicked);

// The mouse wheel over the closed combo box changes nothing; a wheel that scrolls past it would
// otherwise change a setting unseen.
void IgnoreWheel(GtkWidget *combo);

// Whether a full field answers the key with a message: it does for every key but those that shorten
// its text, Tab, Enter and the arrows included.
bool IsRefusedWhenFull(const GdkEventKey *event);

// Moves the keyboard focus to the field unless it is there: focused anew, all of its text would be
// selected, and the next key would replace it.
void FocusUnselected(GtkWidget *field);
