// check_table LOCALE TABLE TRANSLATION ENGLISH: says what is wrong with a string table in that
// locale. Ends with 1 when there is anything, with 2 when it cannot tell.
#include <clocale>
#include <cstdio>

#include "tests/translations/table_check.h"

int main(int argc, char **argv) {
  if (argc != 5) {
    std::fprintf(stderr, "usage: check_table LOCALE TABLE TRANSLATION ENGLISH\n");
    return 2;
  }
  if (std::setlocale(LC_ALL, argv[1]) == nullptr) {
    std::fprintf(stderr, "check_table: there is no locale %s\n", argv[1]);
    return 2;
  }
  const std::vector<WrittenText> english = ReadTranslation(argv[4]);
  if (english.empty()) {
    std::fprintf(stderr, "check_table: there are no texts in %s\n", argv[4]);
    return 2;
  }
  const std::vector<std::string> faults = TableFaults(argv[2], ReadTranslation(argv[3]), english);
  for (const std::string &fault : faults) {
    std::printf("%s: %s\n", argv[2], fault.c_str());
  }
  return faults.empty() ? 0 : 1;
}
