#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/system/Registry.h"

namespace tamarind {

// Registry values by one text path: the root's full name in any letter case, a backslash and the
// subkey. Errors are silent: a value that can not be read is the MissingValueMarker.
class cRegistry {
public:
    explicit cRegistry(Registry& registry) : m_registry(registry) {}

    // Texts without the NUL that ends them; binary values as upper-case hexadecimal digits; of a
    // number the first three bytes as characters. More than 2048 bytes are not read.
    std::string ReadValue(const std::string& ValuePath, const std::string& ValueName,
                          RegistryView view = RegistryView::Native);

    // With `ValType` 4 stores the value's leading number; with any other a text, which has its
    // closing NUL only if `ValType` is 1.
    void WriteValue(const std::string& ValuePath, const std::string& ValueName,
                    std::string_view Value, std::uint32_t ValType);

    // Deletes a key that has no subkeys. The result is always empty.
    std::string Deletekey(const std::string& KeyPath);

private:
    Registry& m_registry;
};

}  // namespace tamarind
