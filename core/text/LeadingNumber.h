#pragma once

#include <cstdint>
#include <string_view>

namespace tamarind {

// The number that a text begins with, behind blanks: the longest decimal number (sign, digits, one
// point, exponent), or the digits behind "&H" (hexadecimal) or "&O" (octal). 0 where none begins.
double LeadingNumber(std::string_view text);

// The same as a whole number, cut towards zero and kept within the type's range.
std::int32_t LeadingInteger(std::string_view text);

}  // namespace tamarind
