// Entries that show any bytes and give them back: a setting need not be UTF-8 or fit its entry, and
// what the user has not touched is saved as it was.
#pragma once

#include <gtk/gtk.h>

#include <string>
#include <string_view>

// Makes a guarded entry show the bytes: as many characters as it holds, with a replacement for what
// is not UTF-8. The guard lets them pass, whatever they hold.
void FillEntry(GtkEntry *entry, std::string_view bytes);

// The bytes that the entry was last filled with, as long as it shows what it showed then; otherwise
// its text, in UTF-8.
std::string EntryBytes(GtkEntry *entry);
