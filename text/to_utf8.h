// From the locale's charset to what can be shown.
#pragma once

#include "text/heap_text.h"

// The UTF-8 form of a text in the current locale's charset. Null when the text is not valid in that
// charset.
HeapText ToUtf8(const char *text);

// LookupText, then ToUtf8: how every visible text of the program is made, right before it is shown.
// Never null: a text that has no UTF-8 form in this locale is empty.
HeapText ShownText(const char *english, const char *key, const char *section);
