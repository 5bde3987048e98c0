#include "text/to_utf8.h"

#include <glib.h>

#include "text/string_table.h"

HeapText ToUtf8(const char *text) {
  return HeapText::Adopt(g_locale_to_utf8(text, -1, nullptr, nullptr, nullptr));
}

HeapText ShownText(const char *english, const char *key, const char *section) {
  HeapText shown = ToUtf8(LookupText(section, key, english).OrEmpty());
  return shown ? std::move(shown) : HeapText::Copy("");
}

HeapText ShowableBytes(const char *bytes) {
  return HeapText::Adopt(g_utf8_make_valid(bytes, -1));
}
