#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/keys/KeyRecord.h"

namespace tamarind {

// A colour as Total Commander stores it: blue, green and red from the top in 24 bits, or the
// system's own.
struct ColorSample {
    bool isSystemColor = false;
    std::uint32_t color = 0;
};

// Whether the key's value is a colour, which is shown beside the list and chosen in the colour
// dialog: every key of the section Colors, and the colour keys of Lister.
bool HasColor(const KeyRecord& record);

// -1 and no value are the system's colour; "$" leads hexadecimal digits; all else is a number.
ColorSample ColorOfValue(std::optional<std::string_view> value);

}  // namespace tamarind
