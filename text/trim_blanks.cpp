// Trimming what the user typed.
#include "text/trim_blanks.h"

#include <cstring>

void TrimBlanks(char *text) {
  if (text == nullptr) {
    return;
  }
  std::size_t end = std::strlen(text);
  while (end > 0 && text[end - 1] == ' ') {
    text[--end] = '\0';
  }
  const std::size_t leading = std::strspn(text, " ");
  std::memmove(text, text + leading, end - leading + 1);
}

std::string TrimmedBlanks(std::string_view text) {
  std::string trimmed(text);
  TrimBlanks(trimmed.data());
  trimmed.resize(std::strlen(trimmed.c_str()));
  return trimmed;
}
