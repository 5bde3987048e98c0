// A line of the locale tool: it gives a name, and a name without a table leaves the table empty.
#include <cstring>

#include "tests/fuzz/fuzz.h"
#include "text/string_table.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string line = Bytes(data, size).c_str();  // ends at the first NUL, as it is read
  const std::string name = LocaleNameFromLine(line);
  if (line.empty()) {
    CHECK_PROPERTY(name == "en_US");
  } else {
    CHECK_PROPERTY(line.find(name) != std::string::npos);
  }
  StringTable table;
  table.directory = "/nowhere";
  table.sections = {{"old", {}}};
  LoadLocaleTexts(table, name);
  CHECK_PROPERTY(table.sections.empty() && !table.loaded);
  return 0;
}
