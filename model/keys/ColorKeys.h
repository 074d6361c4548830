#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/keys/KeyRecord.h"

namespace tamarind {

// A colour as Total Commander stores it: a number whose low 24 bits are blue, green and red from
// the top (as COLORREF), or the colour of the system.
struct ColorSample {
    bool isSystemColor = false;
    std::uint32_t color = 0;
};

// Whether the value of the key is a colour, which is shown beside the list and chosen in the colour
// dialog: every key of the section "Colors", and the colour keys of "Lister".
bool HasColor(const KeyRecord& record);

// The colour of a value. -1 and a missing value mean the system's colour; after "$" the digits are
// hexadecimal; anything else is a decimal number: "255" and "$FF" are red.
ColorSample ColorOfValue(std::optional<std::string_view> value);

}  // namespace tamarind
