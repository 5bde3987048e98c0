// The string table: every text that the user sees, by section and key, from one `.prop` file chosen
// by the locale. The English text is given at each call, so the program works without a file.
//
// All texts are bytes in whatever encoding the file uses, normally the locale's; text/shown_text.h
// makes them fit to show.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/heap_text.h"

struct TextEntry {
  std::string key;
  std::string value;
};

// One "[name]" header and the keys below it. Repeated names and keys stay as they are.
struct TextSection {
  std::string name;
  std::vector<TextEntry> entries;  // in file order
};

struct StringTable {
  std::string directory;              // where the `.prop` files are, without a slash at the end
  std::vector<TextSection> sections;  // in file order
  bool loaded = false;                // a file was read to its end; lookups do not look at this
};

// The one table of the process: made on first use, filled by LoadStringTable, never destroyed.
StringTable &GlobalStringTable();

// Sets the process locale from the environment and fills the process table with the texts of that
// locale. Called once, before any widget is built. Reports nothing: without a usable file the table
// is empty and every text is the English one.
void LoadStringTable();

// The locale's name in the line that the locale tool prints for LC_CTYPE: what is between the first
// and the last double quote; "en_US" for an empty line; the whole line, its line feed included,
// when it has no double quote (such a name opens no file, and the fallback decides); what follows
// the quote when there is just one.
std::string LocaleNameFromLine(const std::string &line);

// Fills `table` with the file of `locale_name` in its directory or with the one file it falls back
// to; leaves it empty when there is neither.
void LoadLocaleTexts(StringTable &table, const std::string &locale_name);

// Replaces the table's sections with those of the file. False for an empty path, which leaves the
// table alone, and for a file that cannot be opened, which leaves it empty. Lines that do not fit
// the syntax are skipped; HACKING describes the syntax.
bool ParsePropFile(StringTable &table, const std::string &path);

// A copy of the text of that section and key in the process table, or of `english`. Names compare
// byte by byte; the first match in file order wins. Null only when no memory is left.
HeapText LookupText(std::string_view section, std::string_view key, std::string_view english);

// Removes white space from both ends of a writable text, in place.
void TrimSpace(char *text);

// Turns the escapes \" \' \\ \n \r \t into the characters they stand for, in place. The text keeps
// its length: after k escapes its last k characters are repeated after the converted text. Kept on
// purpose: the rule for translators, to write no escapes, rests on it.
void UnescapeText(char *text);
