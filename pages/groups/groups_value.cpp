#include "pages/groups/groups_value.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view kStoredManualGroup = "MG";
constexpr std::size_t kMaxContinuationBytes = 3;  // of one UTF-8 character

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string_view CutName(std::string_view name) {
  if (name.size() <= kMaxNameBytes) {
    return name;
  }
  std::size_t length = kMaxNameBytes;
  while (length > kMaxNameBytes - kMaxContinuationBytes && IsContinuation(name[length])) {
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

std::vector<GroupRow> ParseGroups(const char *stored) {
  std::vector<GroupRow> rows;
  std::string_view rest(stored);
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find(';'), rest.size());
    ParseEntry(rest.substr(0, length), rows);
    rest.remove_prefix(std::min(length + 1, rest.size()));
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
  return HeapText::Copy(text.c_str(), text.size());
}
