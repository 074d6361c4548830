#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tamarind {

// Types of registry values: REG_SZ, REG_BINARY and REG_DWORD.
inline constexpr std::uint32_t kRegistryString = 1;
inline constexpr std::uint32_t kRegistryBinary = 3;
inline constexpr std::uint32_t kRegistryNumber = 4;

// 64-bit Windows keeps some keys twice, one for 64-bit and one for 32-bit programs (Microsoft:
// "Registry Redirector"). Native is the one for programs like this one, Other the other one.
enum class RegistryView { Native, Other };

// A value with its type, as Windows stores it.
struct RegistryValue {
    std::uint32_t type = 0;
    std::string bytes;  // texts in UTF-16LE, with the NUL that usually ends them
};

// The registry of Windows, or one in memory in tests. `root` is the handle value of a predefined
// key, such as 0x80000001 for HKEY_CURRENT_USER. Names are UTF-8; an empty value name means the
// default value of a key.
class Registry {
public:
    virtual ~Registry() = default;

    // Nothing if the value does not exist or cannot be read.
    virtual std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                               const std::string& valueName, RegistryView view) = 0;
    // Creates the key if it is missing. Returns whether the value was stored.
    virtual bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
                       const RegistryValue& value) = 0;
    // Deletes a key that has no subkeys. Returns whether that succeeded.
    virtual bool DeleteKey(std::uint32_t root, const std::string& subkey) = 0;
};

// The registry of this machine. On other systems than Windows it is empty and stores nothing.
class SystemRegistry final : public Registry {
public:
    std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                       const std::string& valueName, RegistryView view) override;
    bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
               const RegistryValue& value) override;
    bool DeleteKey(std::uint32_t root, const std::string& subkey) override;
};

}  // namespace tamarind
