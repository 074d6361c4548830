#include "model/keys/KeyStore.h"

#include <algorithm>
#include <span>
#include <unordered_set>
#include <utility>

#include "core/ini/cProfile.h"
#include "core/text/Unicode.h"
#include "model/keys/SiblingTexts.h"

namespace tamarind {

KeyEntry SplitEntry(std::string_view value) {
    const std::size_t separator = value.find(kEntrySeparator);
    if (separator == std::string_view::npos) {
        return {value, {}};
    }
    return {value.substr(0, separator), value.substr(separator + kEntrySeparator.size())};
}

void KeyStore::Reset(std::shared_ptr<const IniDocument> dataFile, std::string noDescription) {
    ++m_textVersion;
    m_keys.clear();
    m_categories.clear();
    m_oddNames.clear();
    m_isInFileOrder = true;
    m_ownValues.clear();
    m_pending.clear();
    m_ownDescriptions.clear();
    DropUndescribed();
    m_describedCount = 0;
    m_describedCategories = 0;
    m_twins.clear();
    m_twinsOf.clear();
    m_areTwinsKnown = false;
    m_settings.clear();
    m_keys.reserve(std::min(dataFile->LineCount(), kMaxRecords));
    m_dataFile = std::move(dataFile);
    m_noDescription = std::move(noDescription);
}

void KeyStore::AddCategory(std::string_view name, std::string_view targetSection) {
    m_categories.push_back({name, targetSection});
    m_describedCategories = m_categories.size();
}

bool KeyStore::Add(LineId line) {
    if (m_keys.size() >= kMaxRecords) {
        return false;
    }
    m_isInFileOrder = m_isInFileOrder && (m_keys.empty() || m_keys.back().line < line);
    StoredKey& key = m_keys.emplace_back();
    key.line = line;
    key.category = static_cast<std::uint16_t>(m_categories.size() - 1);
    m_describedCount = m_keys.size();
    return true;
}

bool KeyStore::AddNamed(std::string_view name, std::optional<LineId> line) {
    if (!Add(line.value_or(IniDocument::kNone))) {
        return false;
    }
    m_keys.back().isNamed = true;
    m_oddNames.push_back({static_cast<KeyNumber>(m_keys.size()), std::string(name)});
    return true;
}

// The category of keys that the data file does not have, which is made for the first of them.
std::uint16_t KeyStore::CategoryFor(std::string_view section, std::string_view brackets) {
    const auto isIt = [&](const StoredCategory& category) {
        return category.name.starts_with("[[") == (brackets.size() > 1) &&
               EqualsIgnoreCase(category.targetSection, section);
    };
    // Nearly always it is that of the key before.
    const auto first = m_categories.begin() + static_cast<std::ptrdiff_t>(m_describedCategories);
    auto category = first != m_categories.end() && isIt(m_categories.back())
                        ? m_categories.end() - 1
                        : std::find_if(first, m_categories.end(), isIt);
    if (category == m_categories.end()) {
        std::string& text = m_undescribedSections.emplace_back(brackets);
        text.append(section).append(brackets.size(), ']');
        m_categories.push_back(
            {text, std::string_view(text).substr(brackets.size(), section.size())});
        category = m_categories.end() - 1;
    }
    return static_cast<std::uint16_t>(category - m_categories.begin());
}

KeyNumber KeyStore::AddMore(std::string_view name, std::uint16_t category, LineId model) {
    StoredKey key;
    key.category = category;
    key.line = model;
    m_keys.push_back(key);
    m_undescribedNames += name;
    m_undescribedEnds.push_back(static_cast<std::uint32_t>(m_undescribedNames.size()));
    ++m_textVersion;
    return static_cast<KeyNumber>(m_keys.size());
}

KeyNumber KeyStore::AddUndescribed(std::string_view section, std::string_view name) {
    return AddMore(name, CategoryFor(section, "["), IniDocument::kNone);
}

KeyNumber KeyStore::AddSibling(std::string_view section, std::string_view name, KeyNumber model) {
    const bool isInSection = EqualsIgnoreCase(section, TargetSection(model));
    return AddMore(name, isInSection ? Stored(model).category : CategoryFor(section, "[["), model);
}

void KeyStore::DropUndescribed() {
    ++m_textVersion;
    m_keys.resize(std::min(m_keys.size(), m_describedCount));
    m_categories.resize(std::min(m_categories.size(), m_describedCategories));
    m_undescribedNames.clear();
    m_undescribedEnds.clear();
    m_undescribedSections.clear();
    m_madeEntries.clear();
    m_ownDescriptions.erase(m_ownDescriptions.upper_bound(static_cast<KeyNumber>(m_describedCount)),
                            m_ownDescriptions.end());
}

KeyNumber KeyStore::ModelOf(KeyNumber key) const {
    const bool isSibling = !IsDescribed(key) && Stored(key).line != IniDocument::kNone;
    return isSibling ? Stored(key).line : key;
}

void KeyStore::SetUndescribedTexts(std::string noDescription, PatternEntries patterns) {
    ++m_textVersion;
    m_madeEntries.clear();
    m_undescribedText = std::move(noDescription);
    m_patterns = std::move(patterns);
}

std::string_view KeyStore::EntryOfMore(KeyNumber key) const {
    // One that was made stays: records have views of it.
    if (const auto known = m_madeEntries.find(key); known != m_madeEntries.end()) {
        return known->second;
    }
    const std::string_view name = KeyName(key);
    std::string made;
    std::string_view entry;
    if (const KeyNumber model = ModelOf(key); model != key) {
        const LineId line = Stored(model).line;
        entry = line == IniDocument::kNone ? std::string_view() : m_dataFile->Value(line);
        made = TextForSibling(entry, KeyName(model), name);
        made = TextForSection(made, TargetSection(model), TargetSection(key));
    } else if (m_patterns) {
        const PatternEntry pattern = m_patterns(TargetSection(key), name);
        entry = pattern.entry;
        made = WithNames(entry, pattern.name, TargetSection(key));
    }
    if (made == entry) {
        return entry;
    }
    return m_madeEntries.emplace(key, std::move(made)).first->second;
}

bool KeyStore::DescribesSection(std::string_view section) const {
    return std::ranges::any_of(std::span(m_categories).first(m_describedCategories),
                               [&](const StoredCategory& category) {
                                   return EqualsIgnoreCase(category.targetSection, section);
                               });
}

std::string_view KeyStore::SectionOf(std::string_view category) const {
    const auto described = std::span(m_categories).first(m_describedCategories);
    const auto found = std::ranges::find(described, category, &StoredCategory::name);
    return found == described.end() ? std::string_view() : found->targetSection;
}

bool KeyStore::HasDescription(KeyNumber key) const {
    if (!IsDescribed(key)) {
        return m_ownDescriptions.contains(key) || !SplitEntry(EntryOfMore(key)).description.empty();
    }
    const LineId line = Stored(key).line;
    return m_ownDescriptions.contains(key) ||
           (line != IniDocument::kNone && !SplitEntry(m_dataFile->Value(line)).description.empty());
}

std::string_view KeyStore::KeyName(KeyNumber key) const {
    if (!IsDescribed(key)) {
        const std::size_t at = key - m_describedCount - 1;
        const std::size_t begin = at == 0 ? 0 : m_undescribedEnds[at - 1];
        return std::string_view(m_undescribedNames).substr(begin, m_undescribedEnds[at] - begin);
    }
    if (!Stored(key).isNamed) {
        return m_dataFile->KeyName(Stored(key).line);
    }
    return std::ranges::lower_bound(m_oddNames, key, {}, &OddName::key)->name;
}

std::uint32_t KeyStore::NameHash(KeyNumber key) const {
    const bool isOfLine = IsDescribed(key) && !Stored(key).isNamed;
    return isOfLine ? m_dataFile->NameHash(Stored(key).line) : IniDocument::NameHash(KeyName(key));
}

KeyRecord KeyStore::Record(KeyNumber key) const {
    const StoredKey& stored = Stored(key);
    KeyRecord record;
    record.keyName = KeyName(key);
    record.category = Category(key);
    record.targetSection = TargetSection(key);
    if (stored.line != IniDocument::kNone || !IsDescribed(key)) {
        const std::string_view value =
            IsDescribed(key) ? m_dataFile->Value(stored.line) : EntryOfMore(key);
        const KeyEntry entry = SplitEntry(CutToBuffer(value));
        record.defaultValue = entry.defaultValue;
        record.description = entry.description;
    }
    if (record.description.empty()) {
        record.description = IsDescribed(key) ? m_noDescription : m_undescribedText;
    }
    if (const auto own = m_ownDescriptions.find(key); own != m_ownDescriptions.end()) {
        record.description = own->second;
    }
    record.currentValue = CurrentValue(key);
    record.initialState = stored.initialState;
    record.currentState = stored.currentState;
    record.saveDescription = stored.saveDescription;
    return record;
}

std::optional<KeyNumber> KeyStore::Find(std::string_view section, std::string_view name) const {
    const std::uint32_t hash = IniDocument::NameHash(name);
    for (KeyNumber key = 1; key <= Size(); ++key) {
        if (NameHash(key) == hash && EqualsIgnoreCase(KeyName(key), name) &&
            EqualsIgnoreCase(TargetSection(key), section)) {
            return key;
        }
    }
    return std::nullopt;
}

bool KeyStore::IsChecked(KeyNumber key) const {
    return LooksOf(Stored(key).currentState, {}).isChecked;
}

void KeyStore::SetDescription(KeyNumber key, std::string description) {
    ++m_textVersion;
    m_ownDescriptions[key] = std::move(description);
    m_keys[key - 1].saveDescription = true;
}

bool KeyStore::CanDescribe(KeyNumber key) const {
    const LineId line = Stored(key).line;
    return line != IniDocument::kNone && IsDescribed(key) &&
           CutToBuffer(m_dataFile->Value(line)).size() == m_dataFile->Value(line).size();
}

KeyNumber KeyStore::KeyAtLine(LineId line) const {
    const auto end = m_keys.begin() + static_cast<std::ptrdiff_t>(m_describedCount);
    const auto found = std::ranges::lower_bound(m_keys.begin(), end, line, {}, &StoredKey::line);
    return static_cast<KeyNumber>(found - m_keys.begin()) + 1;
}

void KeyStore::SetSettings(Documents settings) {
    m_ownValues.clear();
    m_pending.clear();
    m_settings = std::move(settings);
}

// Values of pending changes may be views into the old documents, so they are copied before these
// are released.
void KeyStore::SetSettingsBelowPending(Documents settings) {
    std::deque<std::string> kept;
    for (const auto& [key, place] : m_pending) {
        if (const auto value = WholeValue(key)) {
            kept.emplace_back(*value);
            StoredKey& stored = m_keys[key - 1];
            stored.hasOwnValue = true;
            stored.value = static_cast<std::uint32_t>(kept.size() - 1);
        }
    }
    m_ownValues = std::move(kept);
    m_settings = std::move(settings);
}

void KeyStore::SetFromSettings(KeyNumber key, const SettingsPlace& place) {
    if (IsPending(key)) {
        m_pending.erase(key);
    }
    StoredKey& stored = m_keys[key - 1];
    stored.initialState = place.state;
    stored.currentState = place.state;
    stored.value = place.line;
    stored.file = static_cast<std::uint8_t>(place.file);
    stored.hasOwnValue = false;
    stored.keepsSpaces = false;
}

void KeyStore::SetPlace(KeyNumber key, const SettingsPlace& place) {
    if (!IsPending(key)) {
        SetFromSettings(key, place);
        return;
    }
    m_keys[key - 1].initialState = place.state;
    m_pending[key] = place;
}

SettingsPlace KeyStore::PlaceOf(KeyNumber key) const {
    const StoredKey& stored = Stored(key);
    return IsPending(key) ? m_pending.at(key)
                          : SettingsPlace{stored.initialState, stored.value, stored.file};
}

std::optional<std::string_view> KeyStore::ValueInSettings(KeyNumber key) const {
    const SettingsPlace place = PlaceOf(key);
    return place.line == IniDocument::kNone
               ? std::nullopt
               : std::optional(m_settings[place.file]->Value(place.line));
}

std::vector<KeyNumber> KeyStore::PendingKeys() const {
    std::vector<KeyNumber> keys;
    for (const auto& [key, place] : m_pending) {
        if (FirstTwin(key) == key) {
            keys.push_back(key);
        }
    }
    return keys;
}

// Done when a key is changed for the first time: it takes a noticeable part of the time of loading.
// Sorting by hash puts twins next to each other.
void KeyStore::FindTwins() const {
    if (std::exchange(m_areTwinsKnown, true)) {
        return;
    }
    std::vector<std::uint64_t> sectionHashes;
    for (const StoredCategory& category : m_categories) {
        sectionHashes.push_back(std::uint64_t{IniDocument::NameHash(category.targetSection)} << 32);
    }
    std::vector<std::pair<std::uint64_t, KeyNumber>> byHash;
    byHash.reserve(m_describedCount);
    // Keys that the data file does not have are in one category alone.
    for (KeyNumber key = 1; key <= m_describedCount; ++key) {
        byHash.emplace_back(sectionHashes[Stored(key).category] | NameHash(key), key);
    }
    std::ranges::sort(byHash);
    for (std::size_t at = 1; at < byHash.size(); ++at) {
        for (std::size_t other = at; other-- > 0 && byHash[other].first == byHash[at].first;) {
            if (AreTwins(byHash[other].second, byHash[at].second)) {
                AddTwin(byHash[other].second, byHash[at].second);
                break;
            }
        }
    }
}

bool KeyStore::AreTwins(KeyNumber left, KeyNumber right) const {
    return EqualsIgnoreCase(KeyName(left), KeyName(right)) &&
           EqualsIgnoreCase(TargetSection(left), TargetSection(right));
}

void KeyStore::AddTwin(KeyNumber key, KeyNumber twin) const {
    const auto [known, isNew] = m_twinsOf.try_emplace(key, m_twins.size());
    if (isNew) {
        m_twins.push_back({key});
    }
    m_twins[known->second].push_back(twin);
    m_twinsOf[twin] = m_twinsOf[key];
}

KeyNumber KeyStore::FirstTwin(KeyNumber key) const {
    FindTwins();
    const auto twins = m_twinsOf.find(key);
    return twins == m_twinsOf.end() ? key : m_twins[twins->second].front();
}

std::vector<KeyNumber> KeyStore::WithoutTwins(const std::vector<KeyNumber>& keys) const {
    std::vector<KeyNumber> result;
    std::unordered_set<KeyNumber> seen;
    for (const KeyNumber key : keys) {
        if (seen.insert(FirstTwin(key)).second) {
            result.push_back(key);
        }
    }
    return result;
}

void KeyStore::SetOwnValue(KeyNumber key, const std::string& value) {
    StoredKey& stored = m_keys[key - 1];
    if (stored.hasOwnValue) {
        m_ownValues[stored.value] = value;
        return;
    }
    stored.hasOwnValue = true;
    stored.value = static_cast<std::uint32_t>(m_ownValues.size());
    m_ownValues.push_back(value);
}

void KeyStore::NotePlace(KeyNumber key) {
    if (!IsPending(key)) {
        m_pending.emplace(key, PlaceOf(key));
    }
}

void KeyStore::SetValue(KeyNumber key, const std::string& value, KeyState currentState,
                        bool keepsSpaces) {
    ForEachTwin(key, [&](KeyNumber twin) {
        NotePlace(twin);
        SetOwnValue(twin, value);
        m_keys[twin - 1].keepsSpaces = keepsSpaces;
        m_keys[twin - 1].currentState = currentState;
    });
}

void KeyStore::SetState(KeyNumber key, KeyState currentState) {
    ForEachTwin(key, [&](KeyNumber twin) {
        NotePlace(twin);
        m_keys[twin - 1].currentState = currentState;
    });
}

void KeyStore::Discard(KeyNumber key) {
    ForEachTwin(key, [&](KeyNumber twin) { SetFromSettings(twin, PlaceOf(twin)); });
}

void KeyStore::SetSaved(KeyNumber key) {
    SetFromSettings(key, {});
}

std::optional<std::string_view> KeyStore::WholeValue(KeyNumber key) const {
    const StoredKey& stored = Stored(key);
    if (stored.value == IniDocument::kNone) {
        return std::nullopt;
    }
    return stored.hasOwnValue ? std::string_view(m_ownValues[stored.value])
                              : m_settings[stored.file]->Value(stored.value);
}

std::optional<std::string_view> KeyStore::CurrentValue(KeyNumber key) const {
    const auto value = WholeValue(key);
    return value ? std::optional(CutToBuffer(*value)) : std::nullopt;
}

bool KeyStore::CanEditValue(KeyNumber key) const {
    const auto value = WholeValue(key);
    return !value || CutToBuffer(*value).size() == value->size();
}

}  // namespace tamarind
