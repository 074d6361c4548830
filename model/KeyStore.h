#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/IniDocument.h"
#include "model/KeyRecord.h"

namespace tamarind {

// A key record's number, counted from 1 in the data file's order; "key" and the number make up the
// row key. 0 is no record.
using RowKey = std::uint32_t;

// What a data file's entry says.
struct KeyEntry {
    std::string_view defaultValue;
    std::string_view description;  // empty: not available
};

// Splits at the first "///"; without one all of it is the default value.
KeyEntry SplitEntry(std::string_view value);

// Every key of the open data file, in the file's order. A record costs 16 bytes: its texts stay in
// the two documents, which the store keeps alive, and are put together when it is asked for.
class KeyStore {
public:
    using LineId = IniDocument::LineId;

    // More keys than a 16-bit signed counter can number are not taken.
    static constexpr std::size_t kMaxRecords = 32767;

    // Empties the store for the keys of another data file; `noDescription` stands where an entry
    // has none.
    void Reset(std::shared_ptr<const IniDocument> dataFile, std::string noDescription);

    // Begins a category: the records added from now on are its own.
    void AddCategory(std::string_view name, std::string_view targetSection);

    // Adds the key of a line of the data file. Returns false, and adds nothing, when the store is
    // full.
    bool Add(LineId line);

    // The same for a key whose name is not that of the line with its entry, or without one.
    bool AddNamed(std::string_view name, std::optional<LineId> line);

    std::size_t Size() const { return m_keys.size(); }

    // `key` is between 1 and Size().
    KeyRecord Record(RowKey key) const;
    std::string_view KeyName(RowKey key) const;
    std::string_view Category(RowKey key) const { return CategoryOf(key).name; }
    std::string_view TargetSection(RowKey key) const { return CategoryOf(key).targetSection; }
    bool IsChecked(RowKey key) const;

    // Takes another settings file, of which no record has a line yet.
    void SetSettings(std::shared_ptr<const IniDocument> settings);

    // Sets both states as the settings file has them, with the line that says so there.
    void SetFromSettings(RowKey key, KeyState state, LineId line);

    // A pending change: the value, which may be empty, and the state that goes with it.
    void SetValue(RowKey key, std::string value, KeyState currentState);
    void SetState(RowKey key, KeyState currentState) {
        m_keys[key - 1].currentState = currentState;
    }

    // What a save made of a pending change.
    void Rebase(RowKey key, KeyState state);

    KeyState InitialState(RowKey key) const { return Stored(key).initialState; }
    KeyState CurrentState(RowKey key) const { return Stored(key).currentState; }
    std::optional<std::string_view> CurrentValue(RowKey key) const;

private:
    struct StoredCategory {
        std::string_view name;
        std::string_view targetSection;
    };
    struct StoredKey {
        LineId line = IniDocument::kNone;  // of the data file
        // A line of the settings file, a place among the own values, or none for an absent key.
        std::uint32_t value = IniDocument::kNone;
        std::uint16_t category = 0;
        KeyState initialState = KeyState::Absent;
        KeyState currentState = KeyState::Absent;
        bool isNamed = false;      // its name is among the odd ones
        bool hasOwnValue = false;  // its value is among the own ones
        bool saveDescription = false;
    };
    struct OddName {
        RowKey key;
        std::string name;
    };

    const StoredKey& Stored(RowKey key) const { return m_keys[key - 1]; }
    const StoredCategory& CategoryOf(RowKey key) const {
        return m_categories[Stored(key).category];
    }

    std::vector<StoredKey> m_keys;
    std::vector<StoredCategory> m_categories;
    std::vector<OddName> m_oddNames;      // ascending by key
    std::deque<std::string> m_ownValues;  // given by the user
    std::string m_noDescription;
    std::shared_ptr<const IniDocument> m_dataFile;
    std::shared_ptr<const IniDocument> m_settings;
};

// "key12" for 12, and back; 0 for a text that is no row key.
std::string RowKeyText(RowKey key);
RowKey RowKeyOfText(std::string_view text);

}  // namespace tamarind
