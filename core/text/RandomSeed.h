#pragma once

#include <cstdint>

namespace tamarind {

// A number that nobody can know before.
std::uint64_t RandomSeed();

}  // namespace tamarind
