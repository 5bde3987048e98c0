// HeapText: the program's one owner of heap text.
#pragma once

#include <cstdlib>
#include <cstring>
#include <utility>

// A NUL-terminated byte string on the heap, or null ("absent"). Move-only; the text is allocated at
// its exact size and replaced whole. It says nothing about the encoding: whoever hands one out
// does.
class HeapText {
 public:
  HeapText() = default;
  HeapText(HeapText &&other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  HeapText &operator=(HeapText &&other) noexcept {
    if (this != &other) {
      std::free(std::exchange(text_, std::exchange(other.text_, nullptr)));
    }
    return *this;
  }
  HeapText(const HeapText &) = delete;
  HeapText &operator=(const HeapText &) = delete;
  ~HeapText() { std::free(text_); }

  // A fresh copy. Null when `text` is null or no memory is left.
  static HeapText Copy(const char *text) {
    return text == nullptr ? HeapText() : Copy(text, std::strlen(text));
  }

  // A fresh copy of `length` bytes, terminated. Null when no memory is left.
  static HeapText Copy(const char *bytes, std::size_t length) {
    auto *copy = static_cast<char *>(std::malloc(length + 1));
    if (copy != nullptr) {
      std::memcpy(copy, bytes, length);
      copy[length] = '\0';
    }
    return Adopt(copy);
  }

  // Takes over a text from malloc, or from GLib (whose allocator is malloc).
  static HeapText Adopt(char *text) {
    HeapText owner;
    owner.text_ = text;
    return owner;
  }

  explicit operator bool() const { return text_ != nullptr; }
  const char *Get() const { return text_; }                              // may be null
  const char *OrEmpty() const { return text_ != nullptr ? text_ : ""; }  // never null
  char *Writable() { return text_; }                                     // may be null

  // Frees the text and leaves it absent.
  void Reset() { *this = HeapText(); }

 private:
  char *text_ = nullptr;
};
