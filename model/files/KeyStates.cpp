#include "model/files/KeyStates.h"

#include <optional>

#include "core/ini/cProfile.h"

namespace tamarind {
namespace {

// How many keys in advance a name is fetched. The names of a large data file are not in the caches
// near the processor; fetched this early, they are there when they are compared.
constexpr KeyNumber kKeysAhead = 8;

// A hint to the processor; it changes no results.
void Prefetch(std::string_view text) {
#if defined(__GNUC__)
    __builtin_prefetch(text.data());
#else
    static_cast<void>(text);
#endif
}

// Looks keys up in the settings. The section of the last key is kept, because neighbouring records
// nearly always share it.
class SettingsReader {
public:
    explicit SettingsReader(const SettingsFiles& settings) : m_settings(settings) {}

    SettingsPlace Find(const KeyStore& store, KeyNumber key) {
        SetSection(store.TargetSection(key));
        const std::string_view name = store.KeyName(key);
        // If the section is in the settings file itself, the name makes no difference.
        const bool isInMain = m_inFile.file == 0 || SettingsFiles::StaysInMainFile(name);
        const Section& section = isInMain ? m_inMain : m_inFile;
        if (!section.id) {
            return {KeyState::Absent, IniDocument::kNone, section.file};
        }
        const IniDocument::KeyLines found =
            Document(section.file).FindKeyForms(*section.id, name, store.NameHash(key));
        if (found.active != IniDocument::kNone) {
            return {KeyState::Active, found.active, section.file};
        }
        return {found.commented == IniDocument::kNone ? KeyState::Absent : KeyState::Commented,
                found.commented, section.file};
    }

    // Nothing for an absent key.
    std::optional<std::string_view> WholeValueAt(const SettingsPlace& place) const {
        return place.line == IniDocument::kNone
                   ? std::nullopt
                   : std::optional(Document(place.file).Value(place.line));
    }
    // The same as the key list shows it.
    std::optional<std::string_view> ValueAt(const SettingsPlace& place) const {
        const auto value = WholeValueAt(place);
        return value ? std::optional(CutToBuffer(*value)) : std::nullopt;
    }

private:
    struct Section {
        std::size_t file = 0;
        std::optional<IniDocument::SectionId> id;
    };

    const IniDocument& Document(std::size_t file) const {
        return *m_settings.Files()[file].document;
    }

    void SetSection(std::string_view section) {
        // The records of one category share the text itself, so comparing pointers is enough.
        if (!m_isSectionKnown || section.data() != m_sectionName.data() ||
            section.size() != m_sectionName.size()) {
            m_isSectionKnown = true;
            m_sectionName = section;
            m_inMain = {0, Document(0).FindSection(section)};
            const std::size_t file = m_settings.FileOf(section);
            m_inFile = file == 0 ? m_inMain : Section{file, Document(file).FindSection(section)};
        }
    }

    const SettingsFiles& m_settings;
    bool m_isSectionKnown = false;
    std::string_view m_sectionName;
    Section m_inMain;
    Section m_inFile;
};

KeyStore::Documents DocumentsOf(const SettingsFiles& settings) {
    KeyStore::Documents documents;
    for (const SettingsFiles::File& file : settings.Files()) {
        documents.push_back(file.document.get());
    }
    return documents;
}

// Whether a pending change asks for what the settings say already, so that it is no conflict.
bool IsAsPending(const KeyStore& store, KeyNumber key, const SettingsPlace& place,
                 std::optional<std::string_view> value) {
    switch (store.CurrentState(key)) {
        case KeyState::ToBeDeleted:
            return place.state == KeyState::Absent;
        case KeyState::ValueSet:
            return place.state == KeyState::Active && value == store.CurrentValue(key);
        default:
            return place.state == KeyState::Commented && value == store.CurrentValue(key);
    }
}

}  // namespace

void DeriveKeyStates(KeyStore& store, const SettingsFiles& settings,
                     const std::function<void()>& advance) {
    SettingsReader reader(settings);
    store.SetSettings(DocumentsOf(settings));
    for (KeyNumber key = 1; key <= store.Size(); ++key) {
        advance();
        if (key + kKeysAhead <= store.Size()) {
            Prefetch(store.KeyName(key + kKeysAhead));
        }
        const SettingsPlace place = reader.Find(store, key);
        store.SetFromSettings(key, place);
    }
}

void DeriveStatesFrom(KeyNumber first, KeyStore& store, const SettingsFiles& settings) {
    SettingsReader reader(settings);
    for (KeyNumber key = first; key <= store.Size(); ++key) {
        store.SetFromSettings(key, reader.Find(store, key));
    }
}

OutsideChanges TakeOutsideChanges(KeyStore& store, const SettingsFiles& before,
                                  const SettingsFiles& now) {
    const SettingsReader former(before);
    SettingsReader present(now);
    store.SetSettingsBelowPending(DocumentsOf(now));
    OutsideChanges changes;
    for (KeyNumber key = 1; key <= store.Size(); ++key) {
        const SettingsPlace was = store.PlaceOf(key);
        const SettingsPlace is = present.Find(store, key);
        store.SetPlace(key, is);
        const auto value = present.ValueAt(is);
        if (was.state == is.state && former.ValueAt(was) == value) {
            continue;
        }
        if (!store.IsPending(key)) {
            changes.changed.push_back(key);
        } else if (!IsAsPending(store, key, is, value) && store.FirstTwin(key) == key) {
            changes.conflicts.push_back(key);
        }
    }
    return changes;
}

std::vector<HistoryEntry> EntriesOf(const KeyStore& store, const std::vector<KeyNumber>& keys,
                                    const SettingsFiles& settings) {
    SettingsReader reader(settings);
    std::vector<HistoryEntry> entries;
    for (const KeyNumber key : store.WithoutTwins(keys)) {
        const SettingsPlace place = reader.Find(store, key);
        const std::string_view value = reader.WholeValueAt(place).value_or(std::string_view());
        entries.push_back({HistoryEntry::Kind::Whole, key, std::string(value), place.state, false});
    }
    return entries;
}

std::string LineInSettings(const KeyStore& store, KeyNumber key) {
    const auto value = store.ValueInSettings(key);
    if (!value) {
        return {};
    }
    std::string line(store.PlaceOf(key).state == KeyState::Commented ? ";" : "");
    line += store.KeyName(key);
    line += '=';
    return line += CutToBuffer(*value);
}

}  // namespace tamarind
