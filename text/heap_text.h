// HeapText: the program's one owner of heap text.
#pragma once

#include <cstdlib>
#include <memory>
#include <string_view>

// A NUL-terminated byte string on the heap, or null ("absent"). Move-only; the text is allocated at
// its exact size and replaced whole. It says nothing about the encoding; the function that returns
// one does.
class HeapText {
 public:
  HeapText() = default;

  // A fresh copy, terminated. Null when no memory is left.
  static HeapText Copy(std::string_view text) {
    auto *copy = static_cast<char *>(std::malloc(text.size() + 1));
    if (copy != nullptr) {
      text.copy(copy, text.size());
      copy[text.size()] = '\0';
    }
    return Adopt(copy);
  }

  // The same for a text that may be null; then the copy is null too.
  static HeapText Copy(const char *text) {
    return text == nullptr ? HeapText() : Copy(std::string_view(text));
  }

  // Takes over a text from malloc, or from GLib (whose allocator is malloc).
  static HeapText Adopt(char *text) {
    HeapText owner;
    owner.text_.reset(text);
    return owner;
  }

  explicit operator bool() const { return static_cast<bool>(text_); }
  const char *Get() const { return text_.get(); }                   // may be null
  const char *OrEmpty() const { return text_ ? text_.get() : ""; }  // never null

  // Frees the text and leaves it absent.
  void Reset() { text_.reset(); }

 private:
  struct Free {
    void operator()(char *text) const { std::free(text); }
  };
  std::unique_ptr<char, Free> text_;
};
