// Get and set on a document from a file. The input is three lines: a path, a value, and the
// document.
#include <cstring>

#include "settings/xml/settings_file.h"
#include "tests/fuzz/fuzz.h"

namespace {

std::string TakeLine(std::string *rest) {
  const std::size_t end = rest->find('\n');
  const std::string line = rest->substr(0, end);
  rest->erase(0, end == std::string::npos ? rest->size() : end + 1);
  return line.c_str();  // up to a NUL, as callers have it
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string document = Bytes(data, size);
  const std::string path = TakeLine(&document);
  const std::string value = TakeLine(&document);
  const InputFile file(document);
  CHECK_PROPERTY(LoadSettingsFile(file.Path().c_str()) == (document.empty() ? -1 : 0));

  const char *before = SimpleXmlParserGet(path.c_str());
  const bool had_text = before != nullptr;
  SimpleXmlParserSet(path.c_str(), strdup(value.c_str()));
  const char *after = SimpleXmlParserGet(path.c_str());
  if (had_text) {
    CHECK_PROPERTY(after != nullptr);
  }
  // An ampersand may be the first half of an entity, and then is decoded twice.
  if (after != nullptr && value.find('&') == std::string::npos) {
    CHECK_PROPERTY(value == after);
  }
  SimpleXmlParserSet(path.c_str(), nullptr);
  const int saved = SaveSettingsFile(1);
  CHECK_PROPERTY(saved == 0 || saved == -1);
  CHECK_PROPERTY(SaveSettingsFile(0) == 0 && SimpleXmlParserGet(path.c_str()) == nullptr);
  return 0;
}
