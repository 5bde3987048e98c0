// Another product line: lower case, digits, and codes that hold the A of the architecture class.
#pragma once

#include <string_view>

inline constexpr std::string_view kFamilyLetters = "aAqz";

inline constexpr std::string_view kModelCodes[] = {
    "A1", "A1", "aa", "aa",  "7B",  "7B",  "00",  "1a",  "Aa",
    "bA", "99", "zz", "000", "001", "111", "123", "998", "999",
};
