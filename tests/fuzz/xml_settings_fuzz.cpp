// A document in a settings file: get, set, save and load. The input is a line with a path, a line
// with a value, and the document.
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
  return line.c_str();  // ends at a NUL, like what callers pass
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
  // A value with an ampersand may contain an entity, which is decoded twice.
  if (after != nullptr && value.find('&') == std::string::npos) {
    CHECK_PROPERTY(value == after);
  }
  SimpleXmlParserSet(path.c_str(), nullptr);
  CHECK_PROPERTY(SaveSettingsFile(0) == 0 && SimpleXmlParserGet(path.c_str()) == nullptr);
}

// Loads and saves the file until it holds the document as it is written. Returns false if there is
// no document, or if loading and saving still changes the file the second time.
bool MakeStable(const InputFile &file) {
  if (!LoadAndSave(file)) {
    return false;
  }
  const std::string once = Content(file);
  return LoadAndSave(file) && Content(file) == once;
}

// Whether a text in a file keeps the value: there is no white space around it, and getting the
// text, which decodes it in the document, leaves neither an entity nor markup.
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
