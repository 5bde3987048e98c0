// Random lists, built by the dialog's own rules, against what is read back from their stored text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "pages/groups/group_names.h"
#include "pages/groups/group_rules.h"
#include "pages/groups/groups_value.h"
#include "tests/pages/groups/group_row_matchers.h"

namespace {

// A user of the dialog without hands: what can be typed, and no more.
class RandomUser {
 public:
  explicit RandomUser(unsigned seed) : random_(seed) {}

  // Adds, edits or deletes a row, unless the dialog would refuse it.
  void ChangeOneRow(std::vector<GroupRow> &rows) {
    const std::size_t row = rows.empty() ? 0 : Below(rows.size());
    switch (Below(rows.empty() ? 1 : 10)) {
      default:
        if (const auto added = Accepted(rows, std::nullopt)) {
          rows.push_back(*added);
        }
        break;
      case 8:
        if (const auto edited = Accepted(rows, rows[row].name)) {
          rows[*FindRow(rows, rows[row].name)] = *edited;
        }
        break;
      case 9:
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
        break;
    }
  }

 private:
  std::size_t Below(std::size_t bound) { return random_() % bound; }

  std::optional<GroupRow> Accepted(const std::vector<GroupRow> &rows,
                                   const std::optional<std::string> &edited_name) {
    const GroupInput input = {Name(), Typed(255), edited_name};
    if (CheckGroup(input, rows, duplicate_found_) != GroupFault::kNone) {
      return std::nullopt;
    }
    return GroupRow{RowName(UpperName(input.name.c_str())), input.value};
  }

  std::string Name() {
    const std::vector<std::string> known = {"mg", "Manual Group", "manual group", "p1",
                                            "P2", "MGX",          "  sales "};
    return Below(3) == 0 ? known[Below(known.size())] : Typed(50);
  }

  std::string Typed(std::size_t limit) {
    const std::vector<std::string> keys = {
        "a", "b", "M",  "G",  " ", "1", "/", "&",        "\t",           "^",
        "=", ";", "\"", "\\", "<", ":", "?", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    const std::size_t harmless = Below(8) == 0 ? keys.size() : 6;
    std::string text;
    for (std::size_t left = Below(Below(4) == 0 ? limit + 1 : 8); left > 0; --left) {
      text += Below(6) == 0 ? keys[keys.size() - 1 - Below(3)] : keys[Below(harmless)];
    }
    return text;
  }

  std::mt19937 random_;
  bool duplicate_found_ = false;
};

// Names that cannot come back as they were, by the format.
bool ComesBackOtherwise(const GroupRow &row) {
  return row.name.size() > kMaxNameBytes || row.name.rfind("MG", 0) == 0;
}

class GroupsRoundTrip : public testing::TestWithParam<unsigned> {};

TEST_P(GroupsRoundTrip, ReproducesTheListRowForRow) {
  RandomUser user(GetParam());
  std::vector<GroupRow> rows;
  for (int change = 0; change < 400; ++change) {
    user.ChangeOneRow(rows);
    const std::vector<GroupRow> read = ParseGroups(FormatGroups(rows).OrEmpty());
    ASSERT_EQ(read.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(read[i].value, rows[i].value);
      if (!ComesBackOtherwise(rows[i])) {
        EXPECT_EQ(read[i].name, rows[i].name);
      }
    }
  }
  EXPECT_GT(rows.size(), 20U) << "a test that adds next to nothing shows nothing";
}

INSTANTIATE_TEST_SUITE_P(Seeds, GroupsRoundTrip, testing::Values(1U, 22U, 333U, 4444U, 55555U));

}  // namespace
