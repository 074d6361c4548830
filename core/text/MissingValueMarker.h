#pragma once

#include <string_view>

namespace tamarind {

// Stands for "no such value": it is passed as the default of a read and compared with the result.
// No real setting has this text, and writers refuse to store it.
inline constexpr std::string_view MissingValueMarker = "///can\\not/find\\this/data\\\\\\";

static_assert(MissingValueMarker.size() == 28);

// Whether a text that should be a path is one, that is neither empty nor missing.
inline bool IsGivenPath(std::string_view path) {
    return !path.empty() && path != MissingValueMarker;
}

}  // namespace tamarind
