// The product line's own identifiers: placeholders, which a product line replaces at build time
// with -DPRODUCT_DATA=FILE, where FILE is a header of this form. What they mean (which part of an
// image id they are compared with, within which numbers, and what follows from a match) is fixed in
// platform.cpp; data that do not fit are refused by checked_product_data.h.
#pragma once

#include <string_view>

// The families of rows 1 to 4, one letter each, all different. Row 4 is the special family, which
// has one platform code whatever its model.
inline constexpr std::string_view kFamilyLetters = "WXYZ";

// The model codes of rows 1 to 12 are two letters or digits each, those of rows 13 to 18 three
// digits. Rows 1 and 2 share one code, as do rows 3 and 4 and rows 5 and 6: the number decides
// between the two. All others differ.
inline constexpr std::string_view kModelCodes[] = {
    "M1",  "M1",  "M2",  "M2",  "M3",  "M3",   // rows 1 to 6
    "M4",  "M5",  "M6",  "M7",  "M8",  "M9",   // rows 7 to 12
    "901", "902", "903", "904", "905", "906",  // rows 13 to 18
};
