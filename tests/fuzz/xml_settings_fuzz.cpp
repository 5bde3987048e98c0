// Get, set, save and load on a document from a file. The input is three lines: a path, a value, and
// the document.
#include <cstring>
#include <fstream>
#include <iterator>

#include "settings/xml/settings_file.h"
#include "tests/fuzz/fuzz.h"

namespace {

std::string TakeLine(std::string *rest) {
  const std::size_t end = rest->find('\n');
  const std::string line = rest->substr(0, end);
  rest->erase(0, end == std::string::npos ? rest->size() : end + 1);
  return line.c_str();  // up to a NUL, as callers have it
}

std::string Content(const InputFile &file) {
  std::ifstream stream(file.Path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool LoadAndSave(const InputFile &file) {
  LoadSettingsFile(file.Path().c_str());
  return SaveSettingsFile(1) == 0;
}

void CheckGetAndSet(const InputFile &file, const std::string &path, const std::string &value) {
  const bool is_empty = Content(file).empty();
  CHECK_PROPERTY(LoadSettingsFile(file.Path().c_str()) == (is_empty ? -1 : 0));
  const bool had_text = SimpleXmlParserGet(path.c_str()) != nullptr;
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
  CHECK_PROPERTY(SaveSettingsFile(0) == 0 && SimpleXmlParserGet(path.c_str()) == nullptr);
}

// Whether the file, which is changed by that, holds a document that says what it is: written and
// read again, it is written the same.
bool MakeStable(const InputFile &file) {
  if (!LoadAndSave(file)) {
    return false;
  }
  const std::string once = Content(file);
  return LoadAndSave(file) && Content(file) == once;
}

// Whether a text in a file says that: there is no white space around it, and reading it, which
// decodes it in the document, makes neither an entity nor markup of it.
bool IsPlain(const std::string &value) {
  constexpr char kWhiteSpace[] = " \t\r\n";
  return !value.empty() && std::strchr(kWhiteSpace, value.front()) == nullptr &&
         std::strchr(kWhiteSpace, value.back()) == nullptr &&
         value.find_first_of("&<") == std::string::npos;
}

void CheckSurvives(const InputFile &file, const std::string &path, const std::string &value) {
  CHECK_PROPERTY(LoadSettingsFile(file.Path().c_str()) == 0);
  SimpleXmlParserSet(path.c_str(), strdup(value.c_str()));
  const bool is_set = SimpleXmlParserGet(path.c_str()) != nullptr;
  CHECK_PROPERTY(SaveSettingsFile(1) == 0);
  CHECK_PROPERTY(LoadSettingsFile(file.Path().c_str()) == 0);
  const char *loaded = SimpleXmlParserGet(path.c_str());
  CHECK_PROPERTY(is_set ? loaded != nullptr && value == loaded : loaded == nullptr);
  SaveSettingsFile(0);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string document = Bytes(data, size);
  const std::string path = TakeLine(&document);
  const std::string value = TakeLine(&document);
  const InputFile file(document);
  CheckGetAndSet(file, path, value);
  if (MakeStable(file) && IsPlain(value)) {
    CheckSurvives(file, path, value);
  }
  return 0;
}
