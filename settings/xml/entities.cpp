// The entities in the texts of the settings file.
#include "settings/xml/entities.h"

#include <cstdlib>
#include <cstring>

#include "settings/xml/simple_xml.h"

namespace {

struct Entity {
  const char *character;
  const char *encoded;
};

// In this order, in both directions: the ampersand first.
constexpr Entity kEntities[] = {
    {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"'", "&apos;"}, {"\"", "&quot;"},
};

// Replaces every occurrence. When there is one, `*text` is freed and set to the new text.
void Replace(char **text, const char *find_text, const char *replace_text) {
  if (char *replaced = strrep(*text, find_text, replace_text)) {
    free(*text);
    *text = replaced;
  }
}

// The character at the beginning of `text` with which the parser would not begin a text: ">", alone
// or in "/>", or a quote that is not closed. Null when the text begins otherwise.
const char *MisplacedCharacter(const char *text) {
  const char *first = text + strspn(text, "\t\n\r ");
  if (first[0] == '/' && first[1] == '>') {
    return first + 1;
  }
  const bool is_quote = *first == '"' || *first == '\'';
  const bool is_misplaced = *first == '>' || (is_quote && strchr(first + 1, *first) == nullptr);
  return is_misplaced ? first : nullptr;
}

}  // namespace

void DecodeEntities(char **text) {
  for (const Entity &entity : kEntities) {
    Replace(text, entity.encoded, entity.character);
  }
}

void EncodeEntities(char **text) {
  for (const Entity &entity : kEntities) {
    Replace(text, entity.character, entity.encoded);
  }
}

void MakeTextReadable(char **text) {
  const char *misplaced = MisplacedCharacter(*text);
  const char character = misplaced == nullptr ? '\0' : *misplaced;
  for (const Entity &entity : kEntities) {
    if (*entity.character == character) {
      Replace(text, entity.character, entity.encoded);
    }
  }
}
