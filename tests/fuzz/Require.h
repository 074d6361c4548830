#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tamarind {

// The fuzzer ends with the error and keeps its input; in a test it is a failure.
inline void Require(bool condition, int line = __builtin_LINE()) {
    if (!condition) {
        throw std::logic_error("The condition in line " + std::to_string(line) + " does not hold");
    }
}

// Longer files take more time without finding more.
inline std::string FuzzedFile(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMost = 4096;
    return {reinterpret_cast<const char*>(data), size < kMost ? size : kMost};
}

}  // namespace tamarind
