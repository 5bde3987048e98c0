// The stored text of the static groups, and the rows it stands for.
//
//   MG="floor2";P1="lab";SALES="north"
//
// Entries of the form name="value", joined by semicolons, without any escaping: names and values
// never hold the characters that the format needs, which the group dialog ensures. All texts are
// bytes, normally UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/heap_text.h"

// One group as the page lists it.
struct GroupRow {
  std::string name;   // as shown
  std::string value;  // taken and stored as it is, blanks included
};

// The manual group as shown; it is stored under the name "MG".
constexpr char kManualGroup[] = "Manual Group";

// A stored name has at most this many bytes; a longer one is cut there, or up to three bytes before
// so as not to end inside a UTF-8 character.
constexpr std::size_t kMaxNameBytes = 50;

// The rows of a stored text, in its order. An entry whose name begins with "MG" is the
// manual group, whatever follows, as in "MG1". The byte right after an entry's first equals sign
// and its last byte are taken for the quotes, so quotes and equals signs inside a value survive.
// Skipped are empty entries, those without an equals sign, and those too short for the quotes.
std::vector<GroupRow> ParseGroups(std::string_view stored);

// The text that stands for the rows, in their order. Null, not empty, when there are none.
HeapText FormatGroups(const std::vector<GroupRow> &rows);
