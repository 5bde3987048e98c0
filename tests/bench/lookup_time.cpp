// How long one look-up takes, by the size of the string table: for each number of texts one line,
// "TEXTS NANOSECONDS", the mean over look-ups of all of them.
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "text/string_table.h"

namespace {

constexpr std::size_t kSizes[] = {10, 100, 1000, 10000};
constexpr std::size_t kLookups = 20000;  // for each size
constexpr char kSection[] = "Page_General";

std::vector<std::string> FillTable(std::size_t texts) {
  std::vector<std::string> keys;
  TextSection section{kSection, {}};
  for (std::size_t i = 0; i < texts; ++i) {
    keys.push_back("PullInterval_Store_Item" + std::to_string(i));
    section.entries.push_back({keys.back(), "text"});
  }
  GlobalStringTable().sections = {section};
  return keys;
}

double NanosecondsOfOne(const std::vector<std::string> &keys) {
  const std::size_t rounds = kLookups / keys.size();
  const auto begin = std::chrono::steady_clock::now();
  for (std::size_t round = 0; round < rounds; ++round) {
    for (const std::string &key : keys) {
      if (!LookupText(kSection, key.c_str(), "")) {
        return 0;
      }
    }
  }
  const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - begin;
  return taken.count() / static_cast<double>(rounds * keys.size());
}

}  // namespace

int main() {
  for (const std::size_t texts : kSizes) {
    std::printf("%zu %.0f\n", texts, NanosecondsOfOne(FillTable(texts)));
  }
  return 0;
}
