#pragma once

#include <string_view>

namespace tamarind {

// Stands for "no such value": passed as the default of a read and compared with the result.
// No real setting can have this text, and writers refuse to store it.
inline constexpr std::string_view MissingValueMarker = "///can\\not/find\\this/data\\\\\\";

static_assert(MissingValueMarker.size() == 28);

}  // namespace tamarind
