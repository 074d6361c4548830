#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tamarind {

// Types of registry values, as Windows numbers them.
inline constexpr std::uint32_t kRegistryString = 1;
inline constexpr std::uint32_t kRegistryBinary = 3;
inline constexpr std::uint32_t kRegistryNumber = 4;

// 64-bit Windows has some keys twice, for programs of either kind. Native: those of programs like
// this one. Other: those of the other kind.
enum class RegistryView { Native, Other };

struct RegistryValue {
    std::uint32_t type = 0;
    std::string bytes;  // texts in UTF-16LE, with the NUL that usually ends them
};

// The registry of Windows or one in memory. `root` is a predefined key's handle value, such as
// 0x80000001 for HKEY_CURRENT_USER. The empty value name is a key's default value.
class Registry {
public:
    virtual ~Registry() = default;

    virtual std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                               const std::string& valueName, RegistryView view) = 0;
    // Creates the key if need be. Returns whether the value was stored.
    virtual bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
                       const RegistryValue& value) = 0;
    // Deletes a key without subkeys. Returns whether it is gone.
    virtual bool DeleteKey(std::uint32_t root, const std::string& subkey) = 0;
};

// The registry of this machine; one without any keys where there is none.
class SystemRegistry final : public Registry {
public:
    std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                       const std::string& valueName, RegistryView view) override;
    bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
               const RegistryValue& value) override;
    bool DeleteKey(std::uint32_t root, const std::string& subkey) override;
};

}  // namespace tamarind
