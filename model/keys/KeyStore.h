#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
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

// The place of a key in the data file, counted from 1. Where there may be none it is optional.
using KeyNumber = std::uint32_t;

// The parts of an entry of the data file. Both are views into it.
struct KeyEntry {
    std::string_view defaultValue;
    std::string_view description;  // empty: not available
};

inline constexpr std::string_view kEntrySeparator = "///";

// Splits at the first separator; without one everything is the default value. "1///On" is the
// default value "1" and the description "On".
KeyEntry SplitEntry(std::string_view value);

// The entry that describes a key with a name of the user's, and that name, which stands for "{n}"
// in it; both empty if there is none. The entry is a view that lives on, the name one into the
// key's.
struct PatternEntry {
    std::string_view entry;
    std::string_view name;
};

// Where the settings have a key: its line, or none, in one of their files.
struct SettingsPlace {
    KeyState state = KeyState::Absent;  // Absent, Active or Commented
    IniDocument::LineId line = IniDocument::kNone;
    std::size_t file = 0;
};

// Every key of the open data file, in the order of the file, and behind them the keys that only the
// settings have, each with its place and state in the settings and its pending change. A record
// takes 16 bytes: its texts stay in the documents of the data file and of the settings, and a
// KeyRecord is put together when it is asked for.
//
// Changes of a key apply to all of its twins (ForEachTwin). The store reads and writes no files:
// LoadDataFile fills it, DeriveKeyStates sets the states, KeyEditor makes changes, SettingsWriter
// saves.
class KeyStore {
public:
    using LineId = IniDocument::LineId;

    // The largest number of keys: that of a signed 16-bit counter.
    static constexpr std::size_t kMaxRecords = 32767;

    // Empties the store for the keys of another data file. `noDescription` stands where an entry
    // has no description.
    void Reset(std::shared_ptr<const IniDocument> dataFile, std::string noDescription);

    // Puts the same text in another language.
    void SetNoDescription(std::string text) { m_noDescription = std::move(text); }

    // Begins a category: the records that are added from now on belong to it. The views must be
    // into the data file.
    void AddCategory(std::string_view name, std::string_view targetSection);

    // Adds the key of a line of the data file. Returns false, and adds nothing, if the store is
    // full.
    bool Add(LineId line);

    // The same for a key whose name is not that of the line with its entry, or that has no line.
    bool AddNamed(std::string_view name, std::optional<LineId> line);

    std::size_t Size() const { return m_keys.size(); }

    // How many of the keys are those of the data file, which come first.
    std::size_t DescribedCount() const { return m_describedCount; }
    bool IsDescribed(KeyNumber key) const { return key <= m_describedCount; }
    // Adds a key that the data file does not have, with copies of these texts. Its category is the
    // section in brackets. Returns its number.
    KeyNumber AddUndescribed(std::string_view section, std::string_view name);
    // The same for a key that one of the data file describes, its model: the two differ in their
    // numbers. In the section of its model it is of the same category, else of one whose name is
    // the section in double brackets.
    KeyNumber AddSibling(std::string_view section, std::string_view name, KeyNumber model);
    // Removes all of these; none may have a pending change.
    void DropUndescribed();
    // The key whose entry describes this one: its model or, for all others, itself.
    KeyNumber ModelOf(KeyNumber key) const;
    bool IsSibling(KeyNumber key) const { return ModelOf(key) != key; }
    // Whether the data file has keys of a section of the settings.
    bool DescribesSection(std::string_view section) const;
    // The section of the settings that a category of the data file is about; empty if there is
    // none.
    std::string_view SectionOf(std::string_view category) const;
    // What stands in the place of their descriptions, and the entries that describe keys with names
    // of the user's by their sections and names.
    using PatternEntries = std::function<PatternEntry(std::string_view, std::string_view)>;
    void SetUndescribedTexts(std::string noDescription, PatternEntries patterns);
    // Whether anything, or the user meanwhile, describes a key.
    bool HasDescription(KeyNumber key) const;

    // In this and all functions below, `key` is between 1 and Size().
    KeyRecord Record(KeyNumber key) const;
    // Views belong to the data file, or hold until a key is added. Names are as written there; they
    // compare by EqualsIgnoreCase.
    std::string_view KeyName(KeyNumber key) const;
    std::uint32_t NameHash(KeyNumber key) const;  // as IniDocument::NameHash
    std::string_view Category(KeyNumber key) const { return CategoryOf(key).name; }
    std::string_view TargetSection(KeyNumber key) const { return CategoryOf(key).targetSection; }
    // The first key of that section and name.
    std::optional<KeyNumber> Find(std::string_view section, std::string_view name) const;
    // Whether the key is, or will be, active in the settings.
    bool IsChecked(KeyNumber key) const;

    // Gives the key a description that is to be written into the data file; "@" stands for a line
    // break.
    void SetDescription(KeyNumber key, std::string description);
    void SetDescriptionSaved(KeyNumber key) { m_keys[key - 1].saveDescription = false; }
    bool IsDescriptionPending(KeyNumber key) const { return Stored(key).saveDescription; }
    // Whether the key can get another description: it has a line of its own, which was read as a
    // whole.
    bool CanDescribe(KeyNumber key) const;

    // Another number whenever names or descriptions are others than before.
    std::uint32_t TextVersion() const { return m_textVersion; }

    // For searches, which look at the keys of the data file: the file that the texts are in, the
    // lines of the records, and the texts that are not in the file.
    const IniDocument& DataFile() const { return *m_dataFile; }
    LineId LineOf(KeyNumber key) const { return Stored(key).line; }
    // Whether each record is a line of the file with its own name, in the order of the lines.
    bool IsInFileOrder() const { return m_isInFileOrder && m_oddNames.empty(); }
    const std::string& NoDescription() const { return m_noDescription; }
    const std::map<KeyNumber, std::string>& OwnDescriptions() const { return m_ownDescriptions; }
    // The first record at or after a line of the data file, or DescribedCount() + 1. Only if
    // IsInFileOrder().
    KeyNumber KeyAtLine(LineId line) const;

    // Takes the files of the settings as they are now. They stay their owner's and must live until
    // the store gets others. All pending changes are lost, and no record may be asked for its value
    // before SetFromSettings has been called for it.
    using Documents = std::vector<const IniDocument*>;
    void SetSettings(Documents settings);
    // The same, but pending changes stay. SetPlace has to be called for each record; until then
    // PlaceOf is where the former settings had it.
    void SetSettingsBelowPending(Documents settings);

    // Sets both states of a record as the settings have them.
    void SetFromSettings(KeyNumber key, const SettingsPlace& place);
    // The same, but of a record with a pending change only the initial state: its change stays.
    void SetPlace(KeyNumber key, const SettingsPlace& place);
    // Where the settings have a record, whatever change of it is pending, and with which value.
    SettingsPlace PlaceOf(KeyNumber key) const;
    std::optional<std::string_view> ValueInSettings(KeyNumber key) const;

    bool IsPending(KeyNumber key) const { return CurrentState(key) >= KeyState::ToBeDeleted; }
    // Whether a save would have anything to write.
    bool HasPending() const { return !m_pending.empty(); }
    // The records with a pending change in the order of the data file; of twins the first one.
    std::vector<KeyNumber> PendingKeys() const;

    // Twins are records with the same name and target section, in different categories: they mean
    // the same line of the settings, so a pending change of one is a change of all. Visits all
    // twins of a key in their order, itself included; most keys are alone.
    template <typename Visit>
    void ForEachTwin(KeyNumber key, Visit visit) const;
    // The first of the twins, which stands for all of them where each line of the settings counts
    // once. The first call takes longer (FindTwins).
    KeyNumber FirstTwin(KeyNumber key) const;

    // Of each group of twins among these keys the first given one.
    std::vector<KeyNumber> WithoutTwins(const std::vector<KeyNumber>& keys) const;

    // Sets a pending change of the key and its twins: a value, which may be empty, and its state.
    // Spaces around a value that the user has typed do not count; with `keepsSpaces` they do.
    void SetValue(KeyNumber key, const std::string& value, KeyState currentState,
                  bool keepsSpaces = false);
    bool KeepsSpaces(KeyNumber key) const { return Stored(key).keepsSpaces; }
    // The same without changing the value.
    void SetState(KeyNumber key, KeyState currentState);
    // Drops the pending change of the key and its twins: they show what the settings have.
    void Discard(KeyNumber key);

    // Ends the pending change of one record, which has to be set from the settings next.
    void SetSaved(KeyNumber key);

    // What the settings have, and what the user has made of it: equal unless a change is pending.
    KeyState InitialState(KeyNumber key) const { return Stored(key).initialState; }
    KeyState CurrentState(KeyNumber key) const { return Stored(key).currentState; }
    // The value as far as the receive buffer takes it, and all of it; nothing for a key without
    // one.
    std::optional<std::string_view> CurrentValue(KeyNumber key) const;
    std::optional<std::string_view> WholeValue(KeyNumber key) const;
    // False if the value in the settings is longer than the receive buffer: editing what is shown
    // of it would cut it.
    bool CanEditValue(KeyNumber key) const;

private:
    struct StoredCategory {
        std::string_view name;
        std::string_view targetSection;
    };
    struct StoredKey {
        // Of the data file; of a key that it does not have the number of its model.
        LineId line = IniDocument::kNone;
        // A line of the settings, a place among the own values, or none for an absent key.
        std::uint32_t value = IniDocument::kNone;
        std::uint16_t category = 0;
        std::uint8_t file = 0;  // of the line, among the settings' files
        KeyState initialState = KeyState::Absent;
        KeyState currentState = KeyState::Absent;
        bool isNamed : 1 = false;      // its name is among the odd ones
        bool hasOwnValue : 1 = false;  // its value is among the own ones
        bool keepsSpaces : 1 = false;  // the own value
        bool saveDescription : 1 = false;
    };
    struct OddName {
        KeyNumber key;
        std::string name;
    };

    // Finds all twins, on the first call only.
    void FindTwins() const;
    bool AreTwins(KeyNumber left, KeyNumber right) const;
    void AddTwin(KeyNumber key, KeyNumber twin) const;
    void SetOwnValue(KeyNumber key, const std::string& value);
    // Notes where the settings have a record that is about to get a pending change.
    void NotePlace(KeyNumber key);

    KeyNumber AddMore(std::string_view name, std::uint16_t category, LineId model);
    std::uint16_t CategoryFor(std::string_view section, std::string_view brackets);
    // The entry of a key that the data file does not have.
    std::string_view EntryOfMore(KeyNumber key) const;

    const StoredKey& Stored(KeyNumber key) const { return m_keys[key - 1]; }
    const StoredCategory& CategoryOf(KeyNumber key) const {
        return m_categories[Stored(key).category];
    }

    std::vector<StoredKey> m_keys;
    std::vector<StoredCategory> m_categories;
    std::vector<OddName> m_oddNames;      // ascending by key
    std::deque<std::string> m_ownValues;  // given by the user
    std::map<KeyNumber, SettingsPlace>
        m_pending;  // records with a pending change, and where the settings have them
    std::map<KeyNumber, std::string> m_ownDescriptions;
    mutable bool m_areTwinsKnown = false;
    mutable std::vector<std::vector<KeyNumber>> m_twins;
    mutable std::unordered_map<KeyNumber, std::size_t>
        m_twinsOf;  // place among them, of those that have any
    std::string m_noDescription;
    bool m_isInFileOrder = true;
    std::size_t m_describedCount = 0;
    std::size_t m_describedCategories = 0;
    std::string m_undescribedNames;                 // one after the other
    std::vector<std::uint32_t> m_undescribedEnds;   // of each name
    std::deque<std::string> m_undescribedSections;  // in brackets
    std::string m_undescribedText;
    PatternEntries m_patterns;
    mutable std::map<KeyNumber, std::string> m_madeEntries;  // of these, with their own numbers
    std::uint32_t m_textVersion = 0;
    std::shared_ptr<const IniDocument> m_dataFile;
    Documents m_settings;
};

template <typename Visit>
void KeyStore::ForEachTwin(KeyNumber key, Visit visit) const {
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
