// The stored text of the static groups, read and written.
#include "pages/groups/groups_value.h"

#include <algorithm>
#include <string_view>

#include "text/utf8.h"

namespace {

constexpr std::string_view kStoredManualGroup = "MG";
constexpr std::size_t kMaxContinuationBytes = 3;  // of one UTF-8 character

std::string_view CutName(std::string_view name) {
  if (name.size() <= kMaxNameBytes) {
    return name;
  }
  std::size_t length = kMaxNameBytes;
  while (length > kMaxNameBytes - kMaxContinuationBytes && ContinuesCharacter(name[length])) {
    --length;
  }
  return name.substr(0, length);
}

std::string_view ShownName(std::string_view stored_name) {
  return stored_name.substr(0, kStoredManualGroup.size()) == kStoredManualGroup
             ? kManualGroup
             : CutName(stored_name);
}

std::string_view StoredName(std::string_view shown_name) {
  return shown_name == kManualGroup ? kStoredManualGroup : CutName(shown_name);
}

void ParseEntry(std::string_view entry, std::vector<GroupRow> &rows) {
  const std::size_t equals = entry.find('=');
  if (equals == std::string_view::npos ||
      entry.size() - equals < std::string_view("=\"\"").size()) {
    return;
  }
  const std::string_view quoted = entry.substr(equals + 1);
  rows.push_back({std::string(ShownName(entry.substr(0, equals))),
                  std::string(quoted.substr(1, quoted.size() - 2))});
}

}  // namespace

std::vector<GroupRow> ParseGroups(std::string_view stored) {
  std::vector<GroupRow> rows;
  while (!stored.empty()) {
    const std::size_t length = std::min(stored.find(';'), stored.size());
    ParseEntry(stored.substr(0, length), rows);
    stored.remove_prefix(std::min(length + 1, stored.size()));
  }
  return rows;
}

HeapText FormatGroups(const std::vector<GroupRow> &rows) {
  if (rows.empty()) {
    return HeapText();
  }
  std::string text;
  for (const GroupRow &row : rows) {
    text.append(text.empty() ? "" : ";").append(StoredName(row.name));
    text.append("=\"").append(row.value).append("\"");
  }
  return HeapText::Copy(text);
}
