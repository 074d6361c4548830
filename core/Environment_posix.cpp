#include "core/Environment.h"

#include <cstdlib>

namespace tamarind {

std::string ProcessEnvironment::Variable(const std::string& name) const {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : value;
}

}  // namespace tamarind
