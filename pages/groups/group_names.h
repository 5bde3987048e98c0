// The names of groups: what a typed one stands for, and which ones are offered. Plain functions of
// plain values; texts are bytes of any encoding that keeps ASCII as it is, normally UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pages/groups/groups_value.h"

// One of the spellings of the manual group's name, in upper case; "MG" is the other.
inline constexpr char kUpperManualGroup[] = "MANUAL GROUP";

// Turns a to z into A to Z, byte by byte; every other byte stays.
void ToUpperAscii(std::string &text);

// The typed name without blanks around it, in upper case.
std::string UpperName(std::string_view typed);

// The name under which a group of that upper-case name is listed: the manual group's own for its
// spellings "MG" and "MANUAL GROUP", otherwise the name itself.
std::string RowName(const std::string &upper_name);

// The first row of exactly that name.
std::optional<std::size_t> FindRow(const std::vector<GroupRow> &rows, const std::string &name);

// The names that the dialog offers: the seven well-known ones, then the names of the rows that are
// not among these.
std::vector<std::string> NameChoices(const std::vector<GroupRow> &rows);
