// The bytes and characters of UTF-8 texts.
#pragma once

#include <string_view>

// Whether the byte continues a character that an earlier byte began.
inline bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The first `count` characters of the text, or all of it when it has fewer.
inline std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  while (end < text.size() && (ContinuesCharacter(text[end]) || count-- > 0)) {
    ++end;
  }
  return text.substr(0, end);
}
