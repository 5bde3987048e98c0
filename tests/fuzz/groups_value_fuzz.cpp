// The stored groups: rows that are read, written and read again are the same.
#include "pages/groups/groups_value.h"
#include "tests/fuzz/fuzz.h"

namespace {

bool AreEqual(const std::vector<GroupRow> &left, const std::vector<GroupRow> &right) {
  bool equal = left.size() == right.size();
  for (std::size_t i = 0; equal && i < left.size(); ++i) {
    equal = left[i].name == right[i].name && left[i].value == right[i].value;
  }
  return equal;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string stored = Bytes(data, size);
  const std::vector<GroupRow> rows = ParseGroups(stored.c_str());
  for (const GroupRow &row : rows) {
    CHECK_PROPERTY(row.name.size() <= kMaxNameBytes && row.name.substr(0, 2) != "MG");
    CHECK_PROPERTY(row.value.find(';') == std::string::npos);
  }
  const HeapText text = FormatGroups(rows);
  CHECK_PROPERTY(static_cast<bool>(text) == !rows.empty());
  CHECK_PROPERTY(AreEqual(ParseGroups(text.OrEmpty()), rows));
  return 0;
}
