// A string table file with any content: every entry that was read can be looked up.
#include <cstring>

#include "tests/fuzz/fuzz.h"
#include "text/string_table.h"

namespace {

// The value that the first entry of that name in file order has.
std::string FirstValue(const std::string &section, const std::string &key) {
  for (const TextSection &candidate : GlobalStringTable().sections) {
    for (const TextEntry &entry : candidate.entries) {
      if (candidate.name == section && entry.key == key) {
        return entry.value;
      }
    }
  }
  return "(none)";
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const InputFile file(Bytes(data, size));
  StringTable &table = GlobalStringTable();
  CHECK_PROPERTY(ParsePropFile(table, file.Path()) && table.loaded);
  for (const TextSection &section : table.sections) {
    for (const TextEntry &entry : section.entries) {
      CHECK_PROPERTY(LookupText(section.name.c_str(), entry.key.c_str(), "").Get() ==
                     FirstValue(section.name, entry.key));
      CHECK_PROPERTY(entry.key.size() + entry.value.size() <= 1022);
    }
  }
  CHECK_PROPERTY(std::strcmp(LookupText("no such section", "key", "english").Get(), "english") ==
                 0);
  CHECK_PROPERTY(!ParsePropFile(table, "/nowhere/at/all") && table.sections.empty());
  return 0;
}
