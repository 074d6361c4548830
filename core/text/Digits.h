#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamarind {

// A number with zeros before it, at least `width` digits long, in base 10 or 16 (small letters).
// The library's formatted output would be a twentieth of the program.
inline std::string PaddedDigits(std::uint64_t number, std::size_t width, unsigned base = 10) {
    std::string digits;
    while (number > 0 || digits.size() < width) {
        digits.insert(digits.begin(), "0123456789abcdef"[number % base]);
        number /= base;
    }
    return digits;
}

}  // namespace tamarind
