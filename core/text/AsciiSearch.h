#pragma once

#include <cstddef>
#include <string_view>

namespace tamarind {

// The first byte offset from `from` on at which `needle` occurs in `text`, with ASCII letters in
// either case; npos if there is none. `needle` must be lower-case ASCII and not empty.
std::size_t FindAsciiIgnoreCase(std::string_view text, std::string_view needle,
                                std::size_t from = 0);

// The offset, from `from` on, of the first byte that is not ASCII; npos if there is none.
std::size_t FindNonAscii(std::string_view text, std::size_t from = 0);

}  // namespace tamarind
