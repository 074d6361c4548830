#include "model/keys/KeyHistory.h"

#include <algorithm>
#include <utility>

namespace tamarind {
namespace {

// Brings a key back to an earlier value and state. Where the settings say the same, nothing is
// pending; where they say something else by now, the former value is.
void RestoreWhole(KeyStore& store, const HistoryEntry& entry) {
    const bool isInSettings =
        store.PlaceOf(entry.key).state == entry.state &&
        store.ValueInSettings(entry.key).value_or(std::string_view()) == entry.value;
    switch (entry.state) {
        case KeyState::Absent:
        case KeyState::Active:
        case KeyState::Commented:
            if (isInSettings) {
                store.Discard(entry.key);
            } else {
                store.SetValue(entry.key, entry.value, PendingStateFor(entry.state), true);
            }
            break;
        case KeyState::ToBeDeleted:
        case KeyState::ValueSet:
        case KeyState::ToBeCommented:
            store.SetValue(entry.key, entry.value, entry.state, entry.keepsSpaces);
            break;
    }
}

// Applies an entry and returns its inverse.
HistoryEntry Apply(KeyStore& store, const HistoryEntry& entry) {
    HistoryEntry inverse = WholeEntry(store, entry.key);
    inverse.kind = entry.kind;
    switch (entry.kind) {
        case HistoryEntry::Kind::Toggle: {
            const bool isCommented =
                LooksOf(store.CurrentState(entry.key), {}).smallIcon == KeyIcon::Commented;
            store.SetState(entry.key, isCommented ? KeyState::ValueSet : KeyState::ToBeCommented);
            break;
        }
        case HistoryEntry::Kind::Value:
            store.SetValue(entry.key, entry.value,
                           entry.value.empty() ? KeyState::ToBeDeleted : KeyState::ValueSet);
            break;
        case HistoryEntry::Kind::Whole:
            RestoreWhole(store, entry);
            break;
    }
    return inverse;
}

}  // namespace

HistoryEntry WholeEntry(const KeyStore& store, KeyNumber key) {
    return {HistoryEntry::Kind::Whole, key,
            std::string(store.WholeValue(key).value_or(std::string_view())),
            store.CurrentState(key), store.KeepsSpaces(key)};
}

void KeyHistory::Record(HistoryStep step) {
    if (!step.entries.empty()) {
        m_undo.push_back(std::move(step));
        m_redo.clear();
    }
}

void KeyHistory::Clear() {
    m_undo.clear();
    m_redo.clear();
}

void KeyHistory::Forget(const std::vector<KeyNumber>& keys) {
    std::vector<KeyNumber> sorted = keys;
    std::ranges::sort(sorted);
    for (Steps* const steps : {&m_undo, &m_redo}) {
        for (HistoryStep& step : *steps) {
            std::erase_if(step.entries, [&](const HistoryEntry& entry) {
                return std::ranges::binary_search(sorted, entry.key);
            });
        }
        std::erase_if(*steps, [](const HistoryStep& step) { return step.entries.empty(); });
    }
}

std::vector<KeyNumber> KeyHistory::Replay(Steps& from, Steps& to, KeyStore& store) {
    std::vector<KeyNumber> changed;
    if (from.empty()) {
        return changed;
    }
    HistoryStep step = std::move(from.back());
    from.pop_back();
    for (HistoryEntry& entry : step.entries) {
        changed.push_back(entry.key);
        entry = Apply(store, entry);
    }
    to.push_back(std::move(step));
    return changed;
}

}  // namespace tamarind
