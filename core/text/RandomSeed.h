#pragma once

#include <cstdint>

namespace tamarind {

// A number that cannot be predicted, for the seed of hash tables. Not for cryptography.
std::uint64_t RandomSeed();

}  // namespace tamarind
