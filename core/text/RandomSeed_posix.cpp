#include <random>

#include "core/text/RandomSeed.h"

namespace tamarind {

std::uint64_t RandomSeed() {
    std::random_device device;
    return (std::uint64_t{device()} << 32) ^ device();
}

}  // namespace tamarind
