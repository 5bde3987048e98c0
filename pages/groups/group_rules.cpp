// What the Groups page and its dialog decide.
#include "pages/groups/group_rules.h"

#include "pages/groups/group_names.h"
#include "text/leading_number.h"
#include "text/trim_blanks.h"

namespace {

constexpr char kNotInName[] = "^=;\\\"";
constexpr char kNotInManualValue[] = "=;\"\\<>*?|:&";
constexpr char kNotInValue[] = "=;\"\\<>*?|:&/";

bool Holds(const std::string &text, const char *characters) {
  return text.find_first_of(characters) != std::string::npos;
}

// While the manual group's row is edited, its value may hold a slash, whatever name is typed.
GroupFault CheckValue(const GroupInput &input, const std::string &upper_name) {
  const std::string value = TrimmedBlanks(input.value);
  if (value.empty()) {
    return GroupFault::kValueEmpty;
  }
  const bool is_manual = RowName(upper_name) == kManualGroup || input.edited_name == kManualGroup;
  if (Holds(value, is_manual ? kNotInManualValue : kNotInValue)) {
    return is_manual ? GroupFault::kManualValueCharacter : GroupFault::kValueCharacter;
  }
  return GroupFault::kNone;
}

// Compared with the upper-case name and not with the row's, on purpose: "MG" typed for the manual
// group's own row is a duplicate.
bool KeepsItsName(const GroupInput &input, const std::string &upper_name) {
  return input.edited_name == upper_name ||
         (input.edited_name == kManualGroup && upper_name == kUpperManualGroup);
}

}  // namespace

bool WantsDhcpGroups(const char *setting) {
  return setting == nullptr || *setting == '\0' || LeadingNumber(setting) != 0;
}

GroupFault CheckGroup(const GroupInput &input, const std::vector<GroupRow> &rows,
                      bool &duplicate_found) {
  const std::string upper_name = UpperName(input.name);
  if (upper_name.empty()) {
    return GroupFault::kNameEmpty;
  }
  if (Holds(upper_name, kNotInName)) {
    return GroupFault::kNameCharacter;
  }
  const GroupFault value_fault = CheckValue(input, upper_name);
  if (value_fault != GroupFault::kNone || KeepsItsName(input, upper_name)) {
    return value_fault;
  }
  duplicate_found = FindRow(rows, RowName(upper_name)).has_value();
  return duplicate_found ? GroupFault::kDuplicate : GroupFault::kNone;
}

int VerdictOf(GroupFault fault) {
  switch (fault) {
    case GroupFault::kNone:
      return 1;
    case GroupFault::kValueEmpty:
    case GroupFault::kManualValueCharacter:
    case GroupFault::kValueCharacter:
      return 0;
    case GroupFault::kNameEmpty:
    case GroupFault::kNameCharacter:
    case GroupFault::kDuplicate:
      break;
  }
  return -1;
}
