#pragma once

#include <map>

#include "core/system/Registry.h"
#include "core/text/Unicode.h"
#include "tests/core/fakes/IgnoreCase.h"

namespace tamarind {

// A registry in memory, for tests. It knows the predefined roots only, does not tell letter case
// apart and, as Windows, deletes no key that has subkeys.
class MemoryRegistry final : public Registry {
public:
    std::uint32_t readOnlyRoot = 0;  // nothing can be stored below it
    RegistryView storesInto = RegistryView::Native;

    std::optional<RegistryValue> Query(std::uint32_t root, const std::string& subkey,
                                       const std::string& valueName, RegistryView view) override {
        const Values& values = m_keys[RootIn(view, root)][subkey];
        const auto found = values.find(valueName);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    bool Store(std::uint32_t root, const std::string& subkey, const std::string& valueName,
               const RegistryValue& value) override {
        const bool isPossible = (root & 0x80000000U) != 0 && root != readOnlyRoot;
        if (isPossible) {
            m_keys[RootIn(storesInto, root)][subkey][valueName] = value;
        }
        return isPossible;
    }

    bool DeleteKey(std::uint32_t root, const std::string& subkey) override {
        auto& keys = m_keys[root];
        std::erase_if(keys, [](const auto& key) { return key.second.empty(); });
        const auto below = keys.lower_bound(subkey + '\\');
        const bool hasSubkeys =
            below != keys.end() &&
            EqualsIgnoreCase(below->first.substr(0, subkey.size() + 1), subkey + '\\');
        return !hasSubkeys && keys.erase(subkey) > 0;
    }

private:
    static std::uint32_t RootIn(RegistryView view, std::uint32_t root) {
        return view == RegistryView::Other ? root | 0x100U : root;
    }

    using Values = std::map<std::string, RegistryValue, LessIgnoreCase>;
    std::map<std::uint32_t, std::map<std::string, Values, LessIgnoreCase>> m_keys;
};

}  // namespace tamarind
