#include "core/system/Registry.h"

namespace tamarind {

std::optional<RegistryValue> SystemRegistry::Query(std::uint32_t, const std::string&,
                                                   const std::string&, RegistryView) {
    return std::nullopt;
}

bool SystemRegistry::Store(std::uint32_t, const std::string&, const std::string&,
                           const RegistryValue&) {
    return false;
}

bool SystemRegistry::DeleteKey(std::uint32_t, const std::string&) {
    return false;
}

}  // namespace tamarind
