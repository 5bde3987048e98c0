// The names of groups.
#include "pages/groups/group_names.h"

#include <algorithm>
#include <iterator>

#include "text/trim_blanks.h"

namespace {

const char *const kWellKnownNames[] = {kManualGroup, "P1", "P2", "P3", "P4", "P5", "P6"};

bool IsWellKnown(const std::string &name) {
  return std::find(std::begin(kWellKnownNames), std::end(kWellKnownNames), name) !=
         std::end(kWellKnownNames);
}

}  // namespace

void ToUpperAscii(std::string &text) {
  for (char &byte : text) {
    if (byte >= 'a' && byte <= 'z') {
      byte = static_cast<char>(byte - 'a' + 'A');
    }
  }
}

std::string UpperName(std::string_view typed) {
  std::string name = TrimmedBlanks(typed);
  ToUpperAscii(name);
  return name;
}

std::string RowName(const std::string &upper_name) {
  return upper_name == "MG" || upper_name == kUpperManualGroup ? kManualGroup : upper_name;
}

std::optional<std::size_t> FindRow(const std::vector<GroupRow> &rows, const std::string &name) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].name == name) {
      return i;
    }
  }
  return std::nullopt;
}

std::vector<std::string> NameChoices(const std::vector<GroupRow> &rows) {
  std::vector<std::string> choices(std::begin(kWellKnownNames), std::end(kWellKnownNames));
  for (const GroupRow &row : rows) {
    if (!IsWellKnown(row.name)) {
      choices.push_back(row.name);
    }
  }
  return choices;
}
