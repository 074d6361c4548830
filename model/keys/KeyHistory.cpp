#include "model/keys/KeyHistory.h"

#include <algorithm>
#include <utility>

namespace tamarind {

void KeyHistory::Record(HistoryEntry entry) {
    m_undo.push_back(std::move(entry));
    m_redo.clear();
}

void KeyHistory::Clear() {
    m_undo.clear();
    m_redo.clear();
}

void KeyHistory::Forget(const std::vector<KeyNumber>& keys) {
    for (Entries* const entries : {&m_undo, &m_redo}) {
        std::erase_if(*entries, [&](const HistoryEntry& entry) {
            return std::ranges::find(keys, entry.key) != keys.end();
        });
    }
}

std::optional<KeyNumber> KeyHistory::Replay(Entries& from, Entries& to, KeyStore& store) {
    if (from.empty()) {
        return std::nullopt;
    }
    HistoryEntry entry = std::move(from.back());
    from.pop_back();
    HistoryEntry inverse = {entry.key, entry.isCommentToggle, {}};
    if (entry.isCommentToggle) {
        const bool isCommented =
            LooksOf(store.CurrentState(entry.key), {}).smallIcon == KeyIcon::Commented;
        store.SetState(entry.key, isCommented ? KeyState::ValueSet : KeyState::ToBeCommented);
    } else {
        inverse.value = store.WholeValue(entry.key).value_or(std::string_view());
        const KeyState state = entry.value.empty() ? KeyState::ToBeDeleted : KeyState::ValueSet;
        store.SetValue(entry.key, entry.value, state);
    }
    to.push_back(std::move(inverse));
    return entry.key;
}

}  // namespace tamarind
