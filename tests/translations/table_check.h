// What is wrong with a string table. The table is loaded with the program's own reader, and what
// the program would show is compared with what the translator wrote.
#pragma once

#include <string>
#include <vector>

// A text as it is written in a translation (translations/*.txt).
struct WrittenText {
  std::string section;
  std::string key;
  std::string text;  // UTF-8, a carriage return for each "<br>"
};

// The texts of a translation in file order; none when it cannot be read.
std::vector<WrittenText> ReadTranslation(const std::string &path);

// The faults of the table made of `translation`, one line each; none when it is fit to be shipped.
// `english` is the list of all texts. The process must be in the locale that the table is for; its
// string table is then the one that was checked.
std::vector<std::string> TableFaults(const std::string &table_path,
                                     const std::vector<WrittenText> &translation,
                                     const std::vector<WrittenText> &english);
