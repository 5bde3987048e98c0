// Texts as the toolkit shows them: in UTF-8, out of the string table or out of any bytes.
#pragma once

#include <string_view>

#include "text/heap_text.h"

// The UTF-8 form of a text in the current locale's charset. Null when the text is not valid in that
// charset.
HeapText ToUtf8(const char *text);

// LookupText, then ToUtf8: how every text of the string table is made, right before it is shown.
// The English text where it has no UTF-8 form in this locale: a window without
// words, on a machine without the locale that it is started in, would help nobody.
HeapText ShownText(std::string_view section, std::string_view key, std::string_view english);

// Bytes of the registry or the agent, which go through no charset, as they can be shown: what is
// not UTF-8 in them becomes U+FFFD. Such bytes upset the toolkit, and they end the program where a
// screen reader listens. Null only when no memory is left.
HeapText ShowableBytes(std::string_view bytes);
