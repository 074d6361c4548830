#include "model/session/KeyRows.h"

#include <algorithm>
#include <utility>

#include "model/files/DataFile.h"

namespace tamarind {

void KeyRows::Show(KeyList keys, bool canEdit) {
    m_keys = std::move(keys);
    m_canEdit = canEdit;
    m_currentKey.reset();
    m_selectedKeys.clear();
    if (m_keys.Size() > 0) {
        m_currentKey = m_keys.KeyAt(0);
        m_selectedKeys = {*m_currentKey};
    }
    m_listeners.Tell(&KeyListListener::OnKeyListChanged);
    m_listeners.Tell(&KeyListListener::OnKeyShown);
    m_workplace.TellCommandsChanged();
}

void KeyRows::Clear() {
    m_keys.Clear();
    m_canEdit = true;
    m_currentKey.reset();
    m_selectedKeys.clear();
}

void KeyRows::SelectRows(const std::vector<std::size_t>& rows, std::size_t current) {
    m_selectedKeys.clear();
    for (const std::size_t row : rows) {
        m_selectedKeys.push_back(m_keys.KeyAt(row));
    }
    const auto former = std::exchange(m_currentKey, m_keys.KeyAt(current));
    if (former != m_currentKey || rows.size() == 1) {
        m_listeners.Tell(&KeyListListener::OnKeyShown);
    }
    m_workplace.TellCommandsChanged();
}

bool KeyRows::GoTo(KeyNumber key, const std::optional<DescriptionPart>& part) {
    const std::size_t row = m_keys.RowOf(key);
    if (row >= m_keys.Size()) {
        return false;
    }
    ShowKeyDetails(row);
    m_listeners.Tell(&KeyListListener::OnWentToKey, part);
    return true;
}

std::optional<std::size_t> KeyRows::CurrentRow() const {
    const std::size_t row = m_currentKey ? m_keys.RowOf(*m_currentKey) : m_keys.Size();
    return row < m_keys.Size() ? std::optional(row) : std::nullopt;
}

std::optional<KeyNumber> KeyRows::EditableKey() const {
    return m_canEdit ? m_currentKey : std::nullopt;
}

std::vector<KeyNumber> KeyRows::SelectedKeys() const {
    return m_canEdit ? m_selectedKeys : std::vector<KeyNumber>();
}

bool KeyRows::SelectNextKey() {
    const auto row = CurrentRow();
    if (!row || *row + 1 >= m_keys.Size()) {
        return false;
    }
    ShowKeyDetails(*row + 1);
    return true;
}

std::string KeyRows::Description() const {
    return m_currentKey ? DescriptionForDisplay(m_store.Record(*m_currentKey).description)
                        : std::string();
}

void KeyRows::TellChanges(const std::vector<KeyNumber>& keys) const {
    // More rows than that are not visible at a time.
    constexpr std::size_t kManyKeys = 200;
    if (keys.size() > kManyKeys) {
        m_listeners.Tell(&KeyListListener::OnManyKeysChanged);
    } else {
        for (const KeyNumber key : keys) {
            m_store.ForEachTwin(key, [this](KeyNumber twin) { TellChanged(twin); });
        }
    }
    m_workplace.TellCommandsChanged();
}

void KeyRows::ShowReplayed(const std::vector<KeyNumber>& keys) {
    const auto shown = std::ranges::find_if(
        keys, [this](KeyNumber key) { return m_keys.RowOf(key) < m_keys.Size(); });
    if (shown != keys.end()) {
        m_currentKey = *shown;
        m_selectedKeys = {*shown};
        m_listeners.Tell(&KeyListListener::OnKeyShown);
    }
}

}  // namespace tamarind
