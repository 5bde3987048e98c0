// What the entries for gateways, group names and group values refuse.
//
// The registry client puts every value between single quotes and reads it back line by line: a
// single quote would end the quoting early, and a line end would cut the value. So the user cannot
// put either into such an entry. What the program fills in itself is shown as it is.
#pragma once

#include <gtk/gtk.h>

#include <string>

// From now on, text that the user types, pastes or drops into `entry` is refused whole, with the
// error bell, when it holds a single quote, a line feed or a carriage return; a selection that it
// would have replaced stays, and so does a text that a drop would have moved. Texts set by the
// program must come through FillGuardedEntry or, in the entry of a combo box, from the active row,
// whose own text may take its own place.
void GuardEntry(GtkEntry *entry);

// Sets the entry's text to any bytes (not null), whatever they hold. What is no UTF-8 in them is
// shown as a replacement.
void FillGuardedEntry(GtkEntry *entry, const char *bytes);

// The entry's text: the bytes that it was last filled with as long as it shows just these, else
// UTF-8.
std::string GuardedText(GtkEntry *entry);

// For what follows from a change of the entry. Calls the handler at once, or, when something has
// just been deleted or refused there, at the end of this turn of the main loop: a refused insertion
// in its place takes the deletion back, and then the handler is not called at all. Not called
// either when the entry is destroyed before.
void WhenSettled(GtkEntry *entry, void (*handler)());
