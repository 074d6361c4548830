#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "core/ini/IniDocument.h"
#include "model/keys/ValueType.h"

namespace tamarind {

// What the values of keys may be: the file of types that stands beside a data file. It has the
// sections and keys of the settings, and for each key the words of its type:
//
//   [Configuration]
//   SyncFlags=flags 1 2 4 history
//   [Colors]
//   ColorFilter#Color=color        a pattern, as KeyPatterns.h has them
//   [CustomFields_*]
//   Titles=list bar
class ValueTypes {
public:
    // Knows no types.
    ValueTypes() = default;
    explicit ValueTypes(std::shared_ptr<const IniDocument> file) : m_file(std::move(file)) {}

    // The words of a key's type; empty for a key without an entry. The view belongs to the
    // file.
    std::string_view WordsOf(std::string_view section, std::string_view key) const;

    // The type of a key; nothing for one without an entry.
    std::optional<ValueType> TypeOf(std::string_view section, std::string_view key) const;

    // Whether Total Commander writes the key by itself: visited folders, positions, counters.
    bool IsHistory(std::string_view section, std::string_view key) const;

private:
    std::shared_ptr<const IniDocument> m_file;
};

}  // namespace tamarind
