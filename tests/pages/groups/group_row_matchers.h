// Comparing rows of groups, and printing them when they differ.
#pragma once

#include <gmock/gmock.h>

#include <ostream>
#include <string>

#include "pages/groups/groups_value.h"

inline bool operator==(const GroupRow &left, const GroupRow &right) {
  return left.name == right.name && left.value == right.value;
}

inline std::ostream &operator<<(std::ostream &stream, const GroupRow &row) {
  return stream << '(' << row.name << ", " << row.value << ')';
}

inline auto Row(const std::string &name, const std::string &value) {
  return testing::Eq(GroupRow{name, value});
}
