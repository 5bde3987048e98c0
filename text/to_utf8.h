// From the locale's charset to what can be shown.
#pragma once

#include "text/heap_text.h"

// The UTF-8 form of a text in the current locale's charset. Null when the text is not valid in that
// charset.
HeapText ToUtf8(const char *text);

// LookupText, then ToUtf8: how every text of the string table is made, right before it is shown.
// Never null: a text that has no UTF-8 form in this locale is empty.
HeapText ShownText(const char *english, const char *key, const char *section);

// Bytes of the registry or the agent, which go through no charset, as they can be shown: what is no
// UTF-8 in them becomes U+FFFD. Such bytes upset the toolkit, and they end the program where a
// screen reader listens. Null only when no memory is left.
HeapText ShowableBytes(const char *bytes);
