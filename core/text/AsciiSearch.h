#pragma once

#include <cstddef>
#include <string_view>

namespace tamarind {

// The first place at or behind `from` where `needle` stands in `text`, ASCII letters in either
// case; npos without one. `needle` is lower-case ASCII and not empty.
std::size_t FindAsciiIgnoreCase(std::string_view text, std::string_view needle,
                                std::size_t from = 0);

// The first place at or behind `from` of a byte that is not ASCII; npos without one.
std::size_t FindNonAscii(std::string_view text, std::size_t from = 0);

}  // namespace tamarind
