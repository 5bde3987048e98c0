// Loads a string table as the program does, and compares it with its translation.
#include "tests/translations/table_check.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "pages/general/choices.h"
#include "pages/general/duration_text.h"
#include "pages/general/typed_duration.h"
#include "text/shown_text.h"
#include "text/string_table.h"
#include "text/utf8.h"

namespace {

constexpr std::size_t kLineLimit = 1022;  // bytes that the reader takes at once

using Faults = std::vector<std::string>;

std::string Name(const std::string &section, const std::string &key) {
  return "[" + section + "] " + key;
}

std::string RowName(const Choice &choice) {
  return Name("Page_General", choice.key);
}

std::string Quoted(const std::string &text) {
  return "\"" + text + "\"";
}

std::string Trimmed(std::string text) {
  TrimSpace(text.data());
  return text.c_str();
}

bool HasEscape(const std::string &text) {
  std::string unescaped = text;
  UnescapeText(unescaped.data());
  return unescaped != text;
}

bool BreaksLine(const std::string &text) {
  return text.find_first_of("\r\n") != std::string::npos;
}

// Of UTF-8.
std::ptrdiff_t Characters(const std::string &text) {
  return std::count_if(text.begin(), text.end(), [](char c) { return !ContinuesCharacter(c); });
}

const WrittenText *Find(const std::vector<WrittenText> &texts, const WrittenText &like) {
  const auto found = std::find_if(texts.begin(), texts.end(), [&like](const WrittenText &text) {
    return text.section == like.section && text.key == like.key;
  });
  return found == texts.end() ? nullptr : &*found;
}

bool IsReadable(const std::string &line) {
  if (line.empty() || line[0] == '#' || Trimmed(line).empty()) {
    return true;
  }
  return line.find(line[0] == '[' ? ']' : '=') != std::string::npos;
}

// What the reader would skip or cut without a word.
void CheckLines(const std::string &table_path, Faults &faults) {
  std::ifstream file(table_path, std::ios::binary);
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    const std::string where = "line " + std::to_string(++number);
    if (line.size() > kLineLimit) {
      faults.push_back(where + " is longer than 1022 bytes");
    }
    if (!IsReadable(line)) {
      faults.push_back(where + " is neither a section, a text nor a comment");
    }
  }
}

void CheckKeys(const std::vector<WrittenText> &english, Faults &faults) {
  std::set<std::string> seen;
  for (const TextSection &section : GlobalStringTable().sections) {
    for (const TextEntry &entry : section.entries) {
      const std::string name = Name(section.name, entry.key);
      if (Find(english, {section.name, entry.key, ""}) == nullptr) {
        faults.push_back(name + " is unknown to the program");
      }
      if (!seen.insert(name).second) {
        faults.push_back(name + " is there twice");
      }
    }
  }
}

bool IsInTable(const WrittenText &text) {
  const std::vector<TextSection> &sections = GlobalStringTable().sections;
  return std::any_of(sections.begin(), sections.end(), [&text](const TextSection &section) {
    return section.name == text.section &&
           std::any_of(section.entries.begin(), section.entries.end(),
                       [&text](const TextEntry &entry) { return entry.key == text.key; });
  });
}

void CheckShownText(const WrittenText &english, const WrittenText &written, Faults &faults) {
  const std::string name = Name(english.section, english.key);
  const HeapText found =
      LookupText(english.section.c_str(), english.key.c_str(), english.text.c_str());
  const HeapText utf8 = ToUtf8(found.Get());
  if (!utf8) {
    faults.push_back(name + " holds bytes that are not of the charset");
    return;
  }
  const std::string shown = utf8.Get();
  if (shown.empty()) {
    faults.push_back(name + " is empty");
  }
  if (shown.find('%') != std::string::npos) {
    faults.push_back(name + " holds a percent sign");
  }
  if (shown != written.text) {
    faults.push_back(name + " is shown as " + Quoted(shown) + ", but written as " +
                     Quoted(written.text));
  }
  if (BreaksLine(shown) && !BreaksLine(english.text)) {
    faults.push_back(name + " breaks its line, which the English text does not");
  }
}

// A table may lack a text in just one case: it cannot hold it, and what the translator wrote is the
// English text, which the program then shows.
void CheckText(const WrittenText &english, const std::vector<WrittenText> &translation,
               Faults &faults) {
  const std::string name = Name(english.section, english.key);
  const WrittenText *written = Find(translation, english);
  if (written == nullptr) {
    faults.push_back(name + " is not translated");
  } else if (IsInTable(english)) {
    CheckShownText(english, *written, faults);
  } else if (!HasEscape(written->text)) {
    faults.push_back(name + " is missing");
  } else if (written->text != english.text) {
    faults.push_back(name + " is missing: no table can hold " + Quoted(written->text) +
                     ", where a backslash makes an escape with what follows");
  }
}

std::string RowText(const Choice &choice) {
  return ShownText("Page_General", choice.key, choice.english).OrEmpty();
}

void CheckRows(Choices choices, Faults &faults) {
  for (const Choice &choice : choices) {
    const std::string text = RowText(choice);
    if (Characters(text) > kEntryLimit) {
      faults.push_back(RowName(choice) + " is longer than 50 characters");
    }
    for (const Choice &other : choices) {
      if (other.number != choice.number && text == std::to_string(other.number)) {
        faults.push_back(RowName(choice) + " is the number of " + RowName(other));
      }
      if (other.number < choice.number && text == RowText(other)) {
        faults.push_back(RowName(choice) + " is the same as " + RowName(other));
      }
    }
  }
}

// The rows that are made for values between the fixed ones. They are read back by their text too.
void CheckDurations(Choices choices, const char *kind, int limit, Faults &faults) {
  std::vector<std::string> rows;
  std::transform(choices.begin(), choices.end(), std::back_inserter(rows), RowText);
  for (int minutes = 0; minutes <= limit; ++minutes) {
    const std::string text = DurationText(kind, minutes);
    if (Characters(text) > kEntryLimit) {
      faults.push_back(Quoted(text) + " is longer than 50 characters");
      return;  // and so are many more
    }
    const auto same = std::find(rows.begin(), rows.end(), text);
    const bool is_fixed = std::any_of(choices.begin(), choices.end(),
                                      [minutes](const Choice &c) { return c.number == minutes; });
    if (!is_fixed && same != rows.end()) {
      faults.push_back(RowName(choices.begin()[same - rows.begin()]) + " is how " +
                       std::to_string(minutes) + " minutes are shown");
    }
  }
}

void CheckLists(Faults &faults) {
  CheckRows(kPullIntervals, faults);
  CheckRows(kLogLevels, faults);
  CheckRows(kDelayScopes, faults);
  CheckDurations(kPullIntervals, "interval", kMaxInterval, faults);
  CheckDurations(kDelayScopes, "delayScope", kMaxDelay, faults);
}

}  // namespace

std::vector<WrittenText> ReadTranslation(const std::string &path) {
  std::vector<WrittenText> texts;
  std::ifstream file(path);
  std::string section;
  for (std::string line; std::getline(file, line);) {
    const std::size_t equals = line.find('=');
    if (line[0] == '[') {
      section = line.substr(1, line.find(']') - 1);
    } else if (line[0] != '#' && equals != std::string::npos) {
      std::string text = Trimmed(line.substr(equals + 1));
      for (std::size_t at; (at = text.find("<br>")) != std::string::npos;) {
        text.replace(at, 4, "\r");
      }
      texts.push_back({section, Trimmed(line.substr(0, equals)), text});
    }
  }
  return texts;
}

std::vector<std::string> TableFaults(const std::string &table_path,
                                     const std::vector<WrittenText> &translation,
                                     const std::vector<WrittenText> &english) {
  if (!ParsePropFile(GlobalStringTable(), table_path)) {
    return {"the table cannot be opened"};
  }
  Faults faults;
  CheckLines(table_path, faults);
  CheckKeys(english, faults);
  for (const WrittenText &text : english) {
    CheckText(text, translation, faults);
  }
  CheckLists(faults);
  return faults;
}
