#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tamarind {

// The number that a text begins with after blanks; 0 if there is none. It is the longest decimal
// number (sign, digits, one point, exponent), or the digits after "&H" (hexadecimal) or "&O"
// (octal):
//
//   "12px" 12    "-.5e1x" -5    "1e" 1    "&HFF" 255    "x1" 0
double LeadingNumber(std::string_view text);

// The same as a whole number, cut towards zero and limited to the range of the type.
std::int32_t LeadingInteger(std::string_view text);

// The number that the whole text is: digits, maybe after a minus sign, and nothing else.
std::optional<std::int64_t> WholeNumber(std::string_view text);

}  // namespace tamarind
