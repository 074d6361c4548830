#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/keys/KeyRecord.h"

namespace tamarind {

// A color as Total Commander stores it: a number whose low 24 bits are blue, green and red from
// the top (as COLORREF), or the color of the system.
struct ColorSample {
    bool isSystemColor = false;
    std::uint32_t color = 0;
};

// Whether the value of the key is a color, which is shown beside the list and chosen in the color
// dialog: every key of the section "Colors", and the color keys of "Lister".
bool HasColor(const KeyRecord& record);

// The color of a value. -1 and a missing value mean the system's color; after "$" the digits are
// hexadecimal; anything else is a decimal number: "255" and "$FF" are red.
ColorSample ColorOfValue(std::optional<std::string_view> value);

// A color in one of the forms that users write: "255", "$0000FF" (blue, green, red) or "#FF0000"
// (red, green, blue). Nothing for any other text.
std::optional<std::uint32_t> ParseColor(std::string_view text);

// A color in the form that another value has: "$..." or "#..." if that begins so, else decimal.
std::string FormatColor(std::uint32_t color, std::string_view like);

}  // namespace tamarind
