// Texts as the toolkit shows them.
#include "text/shown_text.h"

#include <glib.h>

#include "text/string_table.h"

HeapText ToUtf8(const char *text) {
  return HeapText::Adopt(g_locale_to_utf8(text, -1, nullptr, nullptr, nullptr));
}

HeapText ShownText(std::string_view section, std::string_view key, std::string_view english) {
  HeapText shown = ToUtf8(LookupText(section, key, english).OrEmpty());
  return shown ? std::move(shown) : HeapText::Copy(english);
}

HeapText ShowableBytes(std::string_view bytes) {
  return HeapText::Adopt(g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size())));
}
