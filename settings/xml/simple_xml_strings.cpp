// Copies of texts, with and without replacements.
#include <cstdlib>
#include <cstring>

#include "settings/xml/require.h"
#include "settings/xml/simple_xml.h"

namespace {

size_t CountOf(const char *text, const char *find_text, size_t find_length) {
  size_t count = 0;
  while ((text = strstr(text, find_text)) != nullptr) {
    text += find_length;
    ++count;
  }
  return count;
}

// Memory for `count` texts of `length` bytes and `kept` bytes more; null when there is not enough.
char *AllocateText(size_t kept, size_t count, size_t length) {
  const bool countable = length <= (SIZE_MAX - kept) / count;
  return countable ? static_cast<char *>(malloc(kept + count * length)) : nullptr;
}

// Copies `length` bytes to `end`, and returns the new end.
char *Append(char *end, const char *text, size_t length) {
  memcpy(end, text, length);
  return end + length;
}

}  // namespace

char *SimpleStrdup(const char *text, int32_t text_count) {
  REQUIRE(text != nullptr, "text");
  REQUIRE(text_count >= 0, "textCount >= 0");
  return text_count == 0 ? strdup(text) : strndup(text, static_cast<size_t>(text_count));
}

char *strrep(const char *old_text, const char *find_text, const char *replace_text) {
  REQUIRE(old_text != nullptr, "oldText");
  REQUIRE(find_text != nullptr, "findText");
  REQUIRE(replace_text != nullptr, "replaceText");
  const size_t find_length = strlen(find_text);
  const size_t replace_length = strlen(replace_text);
  const size_t count = find_length == 0 ? 0 : CountOf(old_text, find_text, find_length);
  if (count == 0) {
    return nullptr;
  }
  const size_t kept = strlen(old_text) - count * find_length + 1;
  char *new_text = AllocateText(kept, count, replace_length);
  if (new_text == nullptr) {
    return nullptr;
  }
  char *end = new_text;
  while (const char *found = strstr(old_text, find_text)) {
    end = Append(end, old_text, static_cast<size_t>(found - old_text));
    end = Append(end, replace_text, replace_length);
    old_text = found + find_length;
  }
  Append(end, old_text, strlen(old_text) + 1);
  return new_text;
}
