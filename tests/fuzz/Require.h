#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tamarind {

inline void Require(bool condition, int line = __builtin_LINE()) {
    if (!condition) {
        std::fprintf(stderr, "The condition in line %d does not hold\n", line);
        std::abort();
    }
}

// Longer files take more time without finding more.
inline std::string FuzzedFile(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMost = 4096;
    return {reinterpret_cast<const char*>(data), size < kMost ? size : kMost};
}

}  // namespace tamarind
