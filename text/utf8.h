// What UTF-8 says of its own bytes.
#pragma once

// Whether the byte continues a character that an earlier byte began.
inline bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}
