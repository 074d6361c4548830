#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/system/Registry.h"

namespace tamarind {

// Registry values by a text path: the full name of the root in any letter case, a backslash and the
// subkey, as in "HKEY_CURRENT_USER\Software\Ghisler". Errors are silent: a value that cannot be
// read is the MissingValueMarker.
class cRegistry {
public:
    explicit cRegistry(Registry& registry) : m_registry(registry) {}

    // Texts without their last character, which is the closing NUL; binary values as upper-case
    // hexadecimal digits; of a number its first three bytes as characters. Texts of more than 2048
    // UTF-16 units and other values of more than 2048 bytes are not read.
    std::string ReadValue(const std::string& ValuePath, const std::string& ValueName,
                          RegistryView view = RegistryView::Native);

    // With `ValType` 4 stores the leading number of the value (LeadingInteger), with any other a
    // text, which gets its closing NUL only if `ValType` is 1.
    void WriteValue(const std::string& ValuePath, const std::string& ValueName,
                    std::string_view Value, std::uint32_t ValType);

    // Deletes a key that has no subkeys. The result is always empty.
    std::string Deletekey(const std::string& KeyPath);

private:
    Registry& m_registry;
};

}  // namespace tamarind
