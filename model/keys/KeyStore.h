#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/ini/IniDocument.h"
#include "model/keys/KeyRecord.h"

namespace tamarind {

// A key's place in the data file, counted from 1. None is a std::nullopt.
using KeyNumber = std::uint32_t;

// What a data file's entry says.
struct KeyEntry {
    std::string_view defaultValue;
    std::string_view description;  // empty: not available
};

inline constexpr std::string_view kEntrySeparator = "///";

// Splits at the first separator; without one all of it is the default value.
KeyEntry SplitEntry(std::string_view value);

// Every key of the open data file, in the file's order. A record costs 16 bytes: its texts stay in
// the data file and in the settings, and are put together when it is asked for.
class KeyStore {
public:
    using LineId = IniDocument::LineId;

    // More keys than a 16-bit signed counter can number are not taken.
    static constexpr std::size_t kMaxRecords = 32767;

    // Empties the store for the keys of another data file; `noDescription` stands where an entry
    // has none.
    void Reset(std::shared_ptr<const IniDocument> dataFile, std::string noDescription);

    // The same text in another language.
    void SetNoDescription(std::string text) { m_noDescription = std::move(text); }

    // Begins a category: the records added from now on are its own.
    void AddCategory(std::string_view name, std::string_view targetSection);

    // Adds the key of a line of the data file. Returns false, and adds nothing, when the store is
    // full.
    bool Add(LineId line);

    // The same for a key whose name is not that of the line with its entry, or without one.
    bool AddNamed(std::string_view name, std::optional<LineId> line);

    std::size_t Size() const { return m_keys.size(); }

    // `key` is between 1 and Size().
    KeyRecord Record(KeyNumber key) const;
    std::string_view KeyName(KeyNumber key) const;
    std::uint32_t NameHash(KeyNumber key) const;  // as IniDocument::NameHash
    std::string_view Category(KeyNumber key) const { return CategoryOf(key).name; }
    std::string_view TargetSection(KeyNumber key) const { return CategoryOf(key).targetSection; }
    bool IsChecked(KeyNumber key) const;

    // Gives the key a description of the user's own, which waits to be written into the data file.
    void SetDescription(KeyNumber key, std::string description);
    void SetDescriptionSaved(KeyNumber key) { m_keys[key - 1].saveDescription = false; }
    bool IsDescriptionPending(KeyNumber key) const { return Stored(key).saveDescription; }
    // Whether the data file has room for another description: its entry has a line that was read
    // as a whole.
    bool CanDescribe(KeyNumber key) const;

    // For searches: the file that the texts are in, and the records that differ from it.
    const IniDocument& DataFile() const { return *m_dataFile; }
    LineId LineOf(KeyNumber key) const { return Stored(key).line; }
    // Whether each record is a line of the file, further down than the record before.
    bool IsInFileOrder() const { return m_isInFileOrder && m_oddNames.empty(); }
    const std::string& NoDescription() const { return m_noDescription; }
    const std::map<KeyNumber, std::string>& OwnDescriptions() const { return m_ownDescriptions; }
    // The first record at or behind a line of the data file, or one more than there are. Only for
    // records in the file's order.
    KeyNumber KeyAtLine(LineId line) const;

    // Takes the files that the settings are in now, which stay their owner's and have to live until
    // the store gets others. Every record is to be set from them next.
    using Documents = std::vector<const IniDocument*>;
    void SetSettings(Documents settings);
    // The same, but pending changes keep their values, and no record has a line of the files yet.
    void SetSettingsBelowPending(Documents settings);

    // Sets both states as the settings have them, with the line that says so and the number of the
    // file that it is in.
    void SetFromSettings(KeyNumber key, KeyState state, LineId line, std::size_t file);
    // The same for a record with a pending change, which stays.
    void SetInitialState(KeyNumber key, KeyState state) { m_keys[key - 1].initialState = state; }
    bool IsPending(KeyNumber key) const { return CurrentState(key) >= KeyState::ToBeDeleted; }
    bool HasPending() const;

    // Records of one name and target section are about the same line of the settings: each pending
    // change is one of all of them. Visits them in order; most keys are alone.
    template <typename Visit>
    void ForEachTwin(KeyNumber key, Visit visit);
    KeyNumber FirstTwin(KeyNumber key);

    // A pending change: the value, which may be empty, and the state that goes with it.
    void SetValue(KeyNumber key, const std::string& value, KeyState currentState);
    void SetState(KeyNumber key, KeyState currentState);

    // The record is not pending any more; it is to be set from the settings next.
    void SetSaved(KeyNumber key);

    KeyState InitialState(KeyNumber key) const { return Stored(key).initialState; }
    KeyState CurrentState(KeyNumber key) const { return Stored(key).currentState; }
    // As far as a reader's buffer takes it, and all of it.
    std::optional<std::string_view> CurrentValue(KeyNumber key) const;
    std::optional<std::string_view> WholeValue(KeyNumber key) const;
    // False for a value in the settings that is longer than any reader's buffer: who edits what is
    // shown of it would cut it.
    bool CanEditValue(KeyNumber key) const;

private:
    struct StoredCategory {
        std::string_view name;
        std::string_view targetSection;
    };
    struct StoredKey {
        LineId line = IniDocument::kNone;  // of the data file
        // A line of the settings, a place among the own values, or none for an absent key.
        std::uint32_t value = IniDocument::kNone;
        std::uint16_t category = 0;
        std::uint8_t file = 0;  // of the line, among the settings' files
        KeyState initialState = KeyState::Absent;
        KeyState currentState = KeyState::Absent;
        bool isNamed = false;      // its name is among the odd ones
        bool hasOwnValue = false;  // its value is among the own ones
        bool saveDescription = false;
    };
    struct OddName {
        KeyNumber key;
        std::string name;
    };

    void FindTwins();
    bool AreTwins(KeyNumber left, KeyNumber right) const;
    void AddTwin(KeyNumber key, KeyNumber twin);
    void SetOwnValue(KeyNumber key, const std::string& value);

    const StoredKey& Stored(KeyNumber key) const { return m_keys[key - 1]; }
    const StoredCategory& CategoryOf(KeyNumber key) const {
        return m_categories[Stored(key).category];
    }

    std::vector<StoredKey> m_keys;
    std::vector<StoredCategory> m_categories;
    std::vector<OddName> m_oddNames;      // ascending by key
    std::deque<std::string> m_ownValues;  // given by the user
    std::map<KeyNumber, std::string> m_ownDescriptions;
    bool m_areTwinsKnown = false;
    std::vector<std::vector<KeyNumber>> m_twins;
    std::unordered_map<KeyNumber, std::size_t>
        m_twinsOf;  // place among them, of those that have any
    std::string m_noDescription;
    bool m_isInFileOrder = true;
    std::shared_ptr<const IniDocument> m_dataFile;
    Documents m_settings;
};

template <typename Visit>
void KeyStore::ForEachTwin(KeyNumber key, Visit visit) {
    FindTwins();
    const auto twins = m_twinsOf.find(key);
    if (twins == m_twinsOf.end()) {
        visit(key);
        return;
    }
    for (const KeyNumber twin : m_twins[twins->second]) {
        visit(twin);
    }
}

}  // namespace tamarind
