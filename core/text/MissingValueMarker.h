#pragma once

#include <string_view>

namespace tamarind {

// Stands for "no such value": passed as the default of a read and compared with the result.
// No real setting can have this text, and writers refuse to store it.
inline constexpr std::string_view MissingValueMarker = "///can\\not/find\\this/data\\\\\\";

static_assert(MissingValueMarker.size() == 28);

// Whether a text that names a file names one.
inline bool IsGivenPath(std::string_view path) {
    return !path.empty() && path != MissingValueMarker;
}

}  // namespace tamarind
