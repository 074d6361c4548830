#include "model/KeyStore.h"

#include <algorithm>

#include "core/ShownValue.h"
#include "core/cProfile.h"

namespace tamarind {
KeyEntry SplitEntry(std::string_view value) {
    const std::size_t separator = value.find(kEntrySeparator);
    if (separator == std::string_view::npos) {
        return {value, {}};
    }
    return {value.substr(0, separator), value.substr(separator + kEntrySeparator.size())};
}

void KeyStore::Reset(std::shared_ptr<const IniDocument> dataFile, std::string noDescription) {
    m_keys.clear();
    m_categories.clear();
    m_oddNames.clear();
    m_isInFileOrder = true;
    m_ownValues.clear();
    m_ownDescriptions.clear();
    m_settings.clear();
    m_keys.reserve(std::min(dataFile->LineCount(), kMaxRecords));
    m_dataFile = std::move(dataFile);
    m_noDescription = std::move(noDescription);
}

void KeyStore::AddCategory(std::string_view name, std::string_view targetSection) {
    m_categories.push_back({name, targetSection});
}

bool KeyStore::Add(LineId line) {
    if (m_keys.size() >= kMaxRecords) {
        return false;
    }
    m_isInFileOrder = m_isInFileOrder && (m_keys.empty() || m_keys.back().line < line);
    StoredKey key;
    key.line = line;
    key.category = static_cast<std::uint16_t>(m_categories.size() - 1);
    m_keys.push_back(key);
    return true;
}

bool KeyStore::AddNamed(std::string_view name, std::optional<LineId> line) {
    if (!Add(line.value_or(IniDocument::kNone))) {
        return false;
    }
    m_keys.back().isNamed = true;
    m_oddNames.push_back({static_cast<RowKey>(m_keys.size()), std::string(name)});
    return true;
}

std::string_view KeyStore::KeyName(RowKey key) const {
    if (!Stored(key).isNamed) {
        return m_dataFile->KeyName(Stored(key).line);
    }
    return std::lower_bound(m_oddNames.begin(), m_oddNames.end(), key,
                            [](const OddName& odd, RowKey wanted) { return odd.key < wanted; })
        ->name;
}

std::uint32_t KeyStore::NameHash(RowKey key) const {
    return Stored(key).isNamed ? IniDocument::NameHash(KeyName(key))
                               : m_dataFile->NameHash(Stored(key).line);
}

KeyRecord KeyStore::Record(RowKey key) const {
    const StoredKey& stored = Stored(key);
    KeyRecord record;
    record.keyName = KeyName(key);
    record.category = Category(key);
    record.targetSection = TargetSection(key);
    if (stored.line != IniDocument::kNone) {
        const KeyEntry entry = SplitEntry(CutToBuffer(m_dataFile->Value(stored.line)));
        record.defaultValue = entry.defaultValue;
        record.description = entry.description;
    }
    if (record.description.empty()) {
        record.description = m_noDescription;
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

bool KeyStore::IsChecked(RowKey key) const {
    return LooksOf(Stored(key).currentState, {}).isChecked;
}

void KeyStore::SetDescription(RowKey key, std::string description) {
    m_ownDescriptions[key] = std::move(description);
    m_keys[key - 1].saveDescription = true;
}

bool KeyStore::CanDescribe(RowKey key) const {
    const LineId line = Stored(key).line;
    return line != IniDocument::kNone &&
           CutToBuffer(m_dataFile->Value(line)).size() == m_dataFile->Value(line).size();
}

RowKey KeyStore::KeyAtLine(LineId line) const {
    const auto found =
        std::lower_bound(m_keys.begin(), m_keys.end(), line,
                         [](const StoredKey& key, LineId wanted) { return key.line < wanted; });
    return static_cast<RowKey>(found - m_keys.begin()) + 1;
}

void KeyStore::SetSettings(Documents settings) {
    m_ownValues.clear();
    m_settings = std::move(settings);
}

void KeyStore::SetSettingsBelowPending(Documents settings) {
    std::deque<std::string> kept;
    for (RowKey key = 1; key <= m_keys.size(); ++key) {
        StoredKey& stored = m_keys[key - 1];
        const auto value = IsPending(key) ? CurrentValue(key) : std::nullopt;
        stored.hasOwnValue = value.has_value();
        stored.value = IniDocument::kNone;
        if (value) {
            stored.value = static_cast<std::uint32_t>(kept.size());
            kept.emplace_back(*value);
        }
    }
    m_ownValues = std::move(kept);
    m_settings = std::move(settings);
}

void KeyStore::SetFromSettings(RowKey key, KeyState state, LineId line, std::size_t file) {
    StoredKey& stored = m_keys[key - 1];
    stored.initialState = state;
    stored.currentState = state;
    stored.value = line;
    stored.file = static_cast<std::uint8_t>(file);
    stored.hasOwnValue = false;
}

void KeyStore::SetValue(RowKey key, std::string value, KeyState currentState) {
    StoredKey& stored = m_keys[key - 1];
    stored.currentState = currentState;
    if (stored.hasOwnValue) {
        m_ownValues[stored.value] = std::move(value);
        return;
    }
    stored.hasOwnValue = true;
    stored.value = static_cast<std::uint32_t>(m_ownValues.size());
    m_ownValues.push_back(std::move(value));
}

void KeyStore::Rebase(RowKey key, KeyState state) {
    const StoredKey& stored = Stored(key);
    if (stored.hasOwnValue) {
        std::string& value = m_ownValues[stored.value];
        value = std::string(StoredValue(value));
    }
    m_keys[key - 1].initialState = state;
    m_keys[key - 1].currentState = state;
}

std::optional<std::string_view> KeyStore::CurrentValue(RowKey key) const {
    const StoredKey& stored = Stored(key);
    if (stored.value == IniDocument::kNone) {
        return std::nullopt;
    }
    return stored.hasOwnValue ? std::string_view(m_ownValues[stored.value])
                              : CutToBuffer(m_settings[stored.file]->Value(stored.value));
}

}  // namespace tamarind
