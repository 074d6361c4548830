#include "core/system/Environment.h"

#include <cstdlib>
#include <filesystem>

namespace tamarind {

std::string ProcessEnvironment::Variable(const std::string& name) const {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : value;
}

std::string ProcessEnvironment::FullPath(const std::string& path) const {
    return path.empty() ? path : std::filesystem::absolute(path).string();
}

}  // namespace tamarind
