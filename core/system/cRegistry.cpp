#include "core/system/cRegistry.h"

#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/TextEncoding.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::size_t kMaxValueBytes = 2048;

struct RegistryPath {
    std::uint32_t root = 0;
    std::string subkey;
};

// The numbers are those of the predefined handles (Microsoft: winreg.h). An unknown root gives 0,
// under which nothing is found.
RegistryPath Split(const std::string& path) {
    struct Root {
        std::string_view name;
        std::uint32_t handle;
    };
    constexpr Root kRoots[] = {
        {"HKEY_CLASSES_ROOT", 0x80000000},   {"HKEY_CURRENT_USER", 0x80000001},
        {"HKEY_LOCAL_MACHINE", 0x80000002},  {"HKEY_USERS", 0x80000003},
        {"HKEY_CURRENT_CONFIG", 0x80000005}, {"HKEY_DYN_DATA", 0x80000006},
    };
    const std::size_t end = path.find('\\');
    RegistryPath result;
    for (const Root& root : kRoots) {
        if (EqualsIgnoreCase(root.name, path.substr(0, end))) {
            result.root = root.handle;
        }
    }
    if (end != std::string::npos) {
        result.subkey = path.substr(end + 1);
    }
    return result;
}

std::string HexadecimalText(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

}  // namespace

std::string cRegistry::ReadValue(const std::string& ValuePath, const std::string& ValueName,
                                 RegistryView view) {
    const RegistryPath path = Split(ValuePath);
    const auto value = m_registry.Query(path.root, path.subkey, ValueName, view);
    if (!value) {
        return std::string(MissingValueMarker);
    }
    if (value->type == kRegistryBinary || value->type == kRegistryNumber) {
        if (value->bytes.size() > kMaxValueBytes) {
            return std::string(MissingValueMarker);
        }
        return value->type == kRegistryBinary
                   ? HexadecimalText(value->bytes)
                   : DecodeCodePage(value->bytes.substr(0, 3), SystemAnsiCodePage());
    }
    const std::string text = DecodeUtf16Le(value->bytes);
    const std::size_t units = Utf16Length(text);
    if (units > kMaxValueBytes) {
        return std::string(MissingValueMarker);
    }
    return std::string(CutToUtf16Units(text, units > 0 ? units - 1 : 0));
}

void cRegistry::WriteValue(const std::string& ValuePath, const std::string& ValueName,
                           std::string_view Value, std::uint32_t ValType) {
    const RegistryPath path = Split(ValuePath);
    RegistryValue value;
    if (ValType == kRegistryNumber) {
        value.type = kRegistryNumber;
        const auto number = static_cast<std::uint32_t>(LeadingInteger(Value));
        for (int shift = 0; shift < 32; shift += 8) {
            value.bytes += static_cast<char>((number >> shift) & 0xFF);
        }
    } else {
        value.type = kRegistryString;
        value.bytes = EncodeUtf16Le(Value);
        if (ValType == kRegistryString) {
            value.bytes.append(2, '\0');
        }
    }
    m_registry.Store(path.root, path.subkey, ValueName, value);
}

std::string cRegistry::Deletekey(const std::string& KeyPath) {
    const RegistryPath path = Split(KeyPath);
    m_registry.DeleteKey(path.root, path.subkey);
    return {};
}

}  // namespace tamarind
