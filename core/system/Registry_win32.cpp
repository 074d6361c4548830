#include "core/system/Registry.h"
#include "core/system/UniqueHandle_win32.h"
#include "core/text/WideText_win32.h"

namespace tamarind {
namespace {

// Predefined handles are 32-bit numbers that are sign-extended to the size of a handle.
HKEY RootHandle(std::uint32_t root) {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<std::int32_t>(root)));
}

}  // namespace

std::optional<RegistryValue> SystemRegistry::Query(std::uint32_t root, const std::string& subkey,
                                                   const std::string& valueName,
                                                   RegistryView view) {
    constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const REGSAM access = KEY_QUERY_VALUE | (view == RegistryView::Other ? kOtherView : 0);
    UniqueRegistryKey key;
    if (RegOpenKeyExW(RootHandle(root), Widen(subkey).c_str(), 0, access, key.Put()) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    const std::wstring name = Widen(valueName);
    // The first call asks for the size only.
    RegistryValue value;
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type, nullptr, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.bytes.resize(size);
    if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(value.bytes.data()), &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.bytes.resize(size);
    value.type = type;
    return value;
}

bool SystemRegistry::Store(std::uint32_t root, const std::string& subkey,
                           const std::string& valueName, const RegistryValue& value) {
    UniqueRegistryKey key;
    if (RegCreateKeyExW(RootHandle(root), Widen(subkey).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                        nullptr, key.Put(), nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const auto* bytes = reinterpret_cast<const BYTE*>(value.bytes.data());
    const bool isStored = RegSetValueExW(key.Get(), Widen(valueName).c_str(), 0, value.type, bytes,
                                         static_cast<DWORD>(value.bytes.size())) == ERROR_SUCCESS;
    RegFlushKey(key.Get());
    return isStored;
}

bool SystemRegistry::DeleteKey(std::uint32_t root, const std::string& subkey) {
    return RegDeleteKeyW(RootHandle(root), Widen(subkey).c_str()) == ERROR_SUCCESS;
}

}  // namespace tamarind
