// The product data, which the compiler refuses here unless they fit the tables of platform.cpp.
#pragma once

#include <cstddef>
#include <string_view>

#include PRODUCT_DATA_HEADER  // product_data.h, or what the product line has in its place

namespace product_data {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kLettersAndDigits =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

constexpr bool HoldsOnly(std::string_view text, std::string_view characters) {
  return text.find_first_not_of(characters) == std::string_view::npos;
}

constexpr bool FamiliesDiffer() {
  for (const char letter : kFamilyLetters) {
    if (kFamilyLetters.find(letter) != kFamilyLetters.rfind(letter)) {
      return false;
    }
  }
  return true;
}

constexpr bool CodesAre(std::size_t first_row, std::size_t last_row, std::size_t length,
                        std::string_view characters) {
  std::size_t row = 0;
  for (const std::string_view code : kModelCodes) {
    ++row;
    if (first_row <= row && row <= last_row &&
        (code.size() != length || !HoldsOnly(code, characters))) {
      return false;
    }
  }
  return true;
}

// A code that stood in yet another row would never be reached there.
constexpr bool OnlyPairsShareACode() {
  std::size_t row = 0;
  for (const std::string_view code : kModelCodes) {
    std::size_t first_row = 0;
    while (kModelCodes[first_row] != code) {
      ++first_row;
    }
    if (first_row != (row < 6 ? row - row % 2 : row)) {
      return false;
    }
    ++row;
  }
  return true;
}

static_assert(kFamilyLetters.size() == 4, "four family letters are wanted");
static_assert(HoldsOnly(kFamilyLetters, kLetters), "a family is a letter");
static_assert(FamiliesDiffer(), "the family letters are all different");
static_assert(std::size(kModelCodes) == 18, "18 model codes are wanted");
static_assert(CodesAre(1, 12, 2, kLettersAndDigits),
              "the model codes of rows 1 to 12 are two letters or digits each");
static_assert(CodesAre(13, 18, 3, kDigits),
              "the model codes of rows 13 to 18 are three digits each");
static_assert(OnlyPairsShareACode(),
              "model rows 1 and 2, 3 and 4, 5 and 6 share a code, and no others do");

}  // namespace product_data
