#pragma once

#include <cstddef>
#include <string_view>

namespace tamarind {

// The first byte offset from `from` on at which `needle` occurs in `text`, with ASCII letters in
// either case; npos if there is none. `needle` must have no upper-case ASCII letter and must not be
// empty; what is not ASCII in it is compared byte by byte.
std::size_t FindAsciiIgnoreCase(std::string_view text, std::string_view needle,
                                std::size_t from = 0);

// The offset, from `from` on, of the first byte that is not ASCII; npos if there is none.
std::size_t FindNonAscii(std::string_view text, std::size_t from = 0);

}  // namespace tamarind
