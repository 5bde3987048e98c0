// What the Groups page and its dialog decide: which groups count, and which input is refused. Plain
// functions of plain values; texts are bytes of any encoding that keeps ASCII as it is, normally
// UTF-8.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "pages/groups/groups_value.h"

// Whether the setting asks for the groups of the DHCP tag: every number but zero does, and so does
// an absent (null) or empty setting. A text that does not begin with a number counts as zero.
bool WantsDhcpGroups(const char *setting);

enum class GroupFault {
  kNone,
  kNameEmpty,
  kNameCharacter,
  kValueEmpty,
  kManualValueCharacter,
  kValueCharacter,
  kDuplicate,
};

// What the dialog's two fields hold.
struct GroupInput {
  std::string name;
  std::string value;
  std::optional<std::string> edited_name;  // the name of the row being edited; none while adding
};

// The first fault of the input, in the order of the enumeration. `duplicate_found` tells what the
// search for a duplicate found; it is left as it was when the search is not reached, which is so
// after any other fault and for an edited row that keeps its name.
GroupFault CheckGroup(const GroupInput &input, const std::vector<GroupRow> &rows,
                      bool &duplicate_found);

// -1 for a fault of the name (a duplicate is one), 0 for one of the value, 1 for none.
int VerdictOf(GroupFault fault);
