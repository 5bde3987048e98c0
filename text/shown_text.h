// Texts as the toolkit shows them: in UTF-8, out of the string table or out of any bytes.
#pragma once

#include <string_view>

#include "text/heap_text.h"

// The UTF-8 form of a text in the current locale's charset. Null when the text is not valid in that
// charset.
HeapText ToUtf8(const char *text);

// LookupText, then ToUtf8: every text of the string table is fetched in this way, right before it
// is shown. The English text where ToUtf8 gives null: on a machine that does not have the locale,
// the window would otherwise have no words.
HeapText ShownText(std::string_view section, std::string_view key, std::string_view english);

// Bytes from the registry or the agent, which are in no particular charset, in a form that can be
// shown: what is not UTF-8 becomes U+FFFD. The toolkit would warn of such bytes, and beside a
// screen reader they would end the program. Never null.
HeapText ShowableBytes(std::string_view bytes);
