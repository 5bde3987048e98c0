// The guard of the entries for gateways, group names and group values: what cannot be stored is
// refused.
//
// The registry client puts every value between single quotes and reads it back line by line: a
// single quote would end the quoting early, and a line end would cut the value. So the user cannot
// put either into such an entry. What the program fills in itself is shown as it is.
#pragma once

#include <gtk/gtk.h>

// From now on, text that the user types, pastes or drops into `entry` is refused whole, with the
// error bell, when it holds a single quote, a line feed or a carriage return. A refusal changes
// nothing: a selection that the text would have replaced stays, and so does a text that a drop
// would have moved. The program sets a text with SetTextUnguarded or, in the entry of a combo box,
// by making a row active: the text of that row is not refused.
void GuardEntry(GtkEntry *entry);

// Sets the text (UTF-8) of a guarded entry, whatever it holds.
void SetTextUnguarded(GtkEntry *entry, const char *text);

// For what follows from a change of a guarded entry. Calls the handler at once or, when something
// has just been deleted or refused there, at the end of this turn of the main loop. If text that
// was to replace what was deleted is refused, the deletion is taken back and the handler is not
// called at all. Nor is it called when the entry is destroyed first.
void WhenSettled(GtkEntry *entry, void (*handler)());
