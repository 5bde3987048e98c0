// Entries that show any bytes and give them back: a setting need not be UTF-8 nor fit its entry,
// and what the user has not touched is saved as it was.
#pragma once

#include <gtk/gtk.h>

#include <string>
#include <string_view>

// Makes the entry show the bytes: what is not UTF-8 in them as a replacement, and as many
// characters as the entry holds. Passes the entry's guard, whatever the bytes hold.
void FillEntry(GtkEntry *entry, std::string_view bytes);

// The bytes that the entry was last filled with, as long as it shows what it showed then; otherwise
// its text, in UTF-8.
std::string EntryBytes(GtkEntry *entry);
