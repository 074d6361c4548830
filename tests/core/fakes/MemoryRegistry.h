#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

#include "core/system/Registry.h"

namespace tamarind {

// A registry in memory, for tests. It knows the predefined roots only, does not tell letter case
// apart and, as Windows, deletes no key that has subkeys.
class MemoryRegistry final : public Registry {
public:
    std::uint32_t readOnlyRoot = 0;  // nothing can be stored below it
    RegistryView storesInto = RegistryView::Native;

    std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                       const std::string& valueName, RegistryView view) override {
        const auto found = m_values.find({RootIn(view, root), Fold(subkey), Fold(valueName)});
        return found == m_values.end() ? std::nullopt : std::optional(found->second);
    }

    bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
               const RegistryValue& value) override {
        if ((root & 0x80000000U) == 0 || root == readOnlyRoot) {
            return false;
        }
        m_values[{RootIn(storesInto, root), Fold(subkey), Fold(valueName)}] = value;
        return true;
    }

    bool DeleteKey(std::uint32_t root, const std::string& subkey) override {
        const std::string parent = Fold(subkey) + '\\';
        const auto isBelow = [&](const auto& entry) {
            const auto& [entryRoot, key, name] = entry.first;
            return entryRoot == root && key.compare(0, parent.size(), parent) == 0;
        };
        const auto isItself = [&](const auto& entry) {
            const auto& [entryRoot, key, name] = entry.first;
            return entryRoot == root && key == Fold(subkey);
        };
        return std::none_of(m_values.begin(), m_values.end(), isBelow) &&
               std::erase_if(m_values, isItself) > 0;
    }

private:
    static std::uint32_t RootIn(RegistryView view, std::uint32_t root) {
        return view == RegistryView::Other ? root | 0x100U : root;
    }
    static std::string Fold(std::string text) {
        for (char& c : text) {
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
        }
        return text;
    }

    // By root, key and value name.
    std::map<std::tuple<std::uint32_t, std::string, std::string>, RegistryValue> m_values;
};

}  // namespace tamarind
