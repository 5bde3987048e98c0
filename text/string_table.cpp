// Reading the string tables and looking texts up in them.
#include "text/string_table.h"

#include <cctype>
#include <clocale>
#include <cstdio>
#include <cstring>

#include "text/command_output.h"
#include "text/line_reader.h"

namespace {

constexpr char kDirectory[] = "/etc/vexaagent/i18n/configui";
constexpr char kLocaleCommand[] = "locale | grep LC_CTYPE";
constexpr char kDefaultLocale[] = "en_US";
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::size_t kLineLimit = 1022;  // bytes a read, for the table and the locale line alike

// An empty text when the tool cannot be started or prints nothing.
std::string ReadLocaleLine() {
  std::string line;
  std::FILE *output = OpenOutputOf(kLocaleCommand);
  if (output != nullptr) {
    ReadLine(output, kLineLimit, line);
    std::fclose(output);
  }
  return line;
}

std::string TrimmedSpace(std::string text) {
  TrimSpace(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

void ParseHeader(StringTable &table, const std::string &line) {
  const std::size_t end = line.rfind(']');
  if (end != std::string::npos) {
    table.sections.push_back({TrimmedSpace(line.substr(1, end - 1)), {}});
  }
}

void ParseKeyLine(TextSection &section, const std::string &line) {
  const std::size_t equals = line.find('=');
  // "key=" at the very end of a file stores nothing, while "key=" and a line feed store an empty
  // text: a table that is cut short must not blank out its last text.
  if (equals == std::string::npos || equals + 1 == line.size()) {
    return;
  }
  std::string value = TrimmedSpace(line.substr(equals + 1));
  UnescapeText(value.data());
  section.entries.push_back({TrimmedSpace(line.substr(0, equals)), std::move(value)});
}

void ParseLine(StringTable &table, const std::string &line) {
  if (line.empty() || line[0] == '#') {
    return;
  }
  if (line[0] == '[') {
    ParseHeader(table, line);
  } else if (!table.sections.empty()) {
    ParseKeyLine(table.sections.back(), line);
  }
}

}  // namespace

StringTable &GlobalStringTable() {
  static auto *const table = new StringTable;
  return *table;
}

void LoadStringTable() {
  std::setlocale(LC_ALL, "");
  StringTable &table = GlobalStringTable();
  table.directory = kDirectory;
  LoadLocaleTexts(table, LocaleNameFromLine(ReadLocaleLine()));
}

std::string LocaleNameFromLine(const std::string &line) {
  if (line.empty()) {
    return kDefaultLocale;
  }
  const std::size_t first = line.find('"');
  if (first == std::string::npos) {
    return line;
  }
  const std::size_t last = line.rfind('"');
  return first == last ? line.substr(first + 1) : line.substr(first + 1, last - first - 1);
}

void LoadLocaleTexts(StringTable &table, const std::string &locale_name) {
  const auto path = [&table](const std::string &name) {
    return table.directory + "/" + name + ".prop";
  };
  if (ParsePropFile(table, path(locale_name))) {
    return;
  }
  const std::size_t dot = locale_name.rfind('.');
  if (dot == std::string::npos) {
    return;
  }
  // The plain-named tables are in the traditional charsets and cannot be shown under a UTF-8
  // locale, which therefore falls back to the ASCII texts of "en_US" and not to its own plain name.
  const bool is_utf8 = locale_name.find("UTF-8", dot) != std::string::npos;
  ParsePropFile(table, path(is_utf8 ? kDefaultLocale : locale_name.substr(0, dot)));
}

bool ParsePropFile(StringTable &table, const std::string &path) {
  if (path.empty()) {
    return false;
  }
  table.sections.clear();
  table.loaded = false;
  std::FILE *file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    return false;
  }
  std::string line;
  for (bool first = true; ReadLine(file, kLineLimit, line); first = false) {
    if (first && line.compare(0, 3, kByteOrderMark) == 0) {
      line.erase(0, 3);
    }
    ParseLine(table, line);
  }
  std::fclose(file);
  table.loaded = true;
  return true;
}

HeapText LookupText(std::string_view section, std::string_view key, std::string_view english) {
  for (const TextSection &candidate : GlobalStringTable().sections) {
    if (candidate.name != section) {
      continue;
    }
    for (const TextEntry &entry : candidate.entries) {
      if (entry.key == key) {
        return HeapText::Copy(entry.value);
      }
    }
  }
  return HeapText::Copy(english);
}

void TrimSpace(char *text) {
  const auto is_space = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  std::size_t end = std::strlen(text);
  while (end > 0 && is_space(text[end - 1])) {
    --end;
  }
  std::size_t start = 0;
  while (start < end && is_space(text[start])) {
    ++start;
  }
  std::memmove(text, text + start, end - start);
  text[end - start] = '\0';
}

void UnescapeText(char *text) {
  static constexpr char kEscapes[] = "\"'\\nrt";
  static constexpr char kMeanings[] = "\"'\\\n\r\t";
  char *out = text;
  for (const char *in = text; *in != '\0'; ++in) {
    const char *escape = *in == '\\' && in[1] != '\0' ? std::strchr(kEscapes, in[1]) : nullptr;
    if (escape != nullptr) {
      *out++ = kMeanings[escape - kEscapes];
      ++in;
    } else {
      *out++ = *in;
    }
  }
  // No terminator at `out`: see the header.
}
