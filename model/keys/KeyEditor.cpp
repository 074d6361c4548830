#include "model/keys/KeyEditor.h"

#include <unordered_set>

namespace tamarind {

HistoryEntry KeyEditor::ValueEntry(KeyNumber key) const {
    HistoryEntry entry = WholeEntry(m_store, key);
    entry.kind = HistoryEntry::Kind::Value;
    return entry;
}

void KeyEditor::SetValue(KeyNumber key, const std::string& value) {
    m_history.Record({StepKind::Value, {ValueEntry(key)}});
    m_store.SetValue(key, value, KeyState::ValueSet);
}

std::vector<KeyNumber> KeyEditor::Comment(const std::vector<KeyNumber>& keys) {
    HistoryStep step = {StepKind::Comment, {}};
    std::vector<KeyNumber> changed;
    for (const KeyNumber key : m_store.WithoutTwins(keys)) {
        if (m_store.IsChecked(key)) {
            m_store.SetState(key, KeyState::ToBeCommented);
            step.entries.push_back({HistoryEntry::Kind::Toggle, key, {}, KeyState::Absent, false});
            changed.push_back(key);
        }
    }
    m_history.Record(std::move(step));
    return changed;
}

std::vector<KeyNumber> KeyEditor::Delete(const std::vector<KeyNumber>& keys, StepKind kind) {
    HistoryStep step = {kind, {}};
    std::vector<KeyNumber> changed;
    for (const KeyNumber key : m_store.WithoutTwins(keys)) {
        if (!LooksOf(m_store.CurrentState(key), {}).isGhosted) {
            step.entries.push_back(ValueEntry(key));
            m_store.SetValue(key, {}, KeyState::ToBeDeleted);
            changed.push_back(key);
        }
    }
    // Of several keys each comes back as it was; the undoing of a single deletion makes an active
    // key of a commented-out one, too.
    if (step.entries.size() > 1 || kind != StepKind::Delete) {
        for (HistoryEntry& entry : step.entries) {
            entry.kind = HistoryEntry::Kind::Whole;
        }
    }
    m_history.Record(std::move(step));
    return changed;
}

void KeyEditor::Change(StepKind kind, const std::vector<KeyChange>& changes) {
    HistoryStep step = {kind, {}};
    std::unordered_set<KeyNumber> seen;
    for (const KeyChange& change : changes) {
        if (seen.insert(m_store.FirstTwin(change.key)).second) {
            step.entries.push_back(WholeEntry(m_store, change.key));
            m_store.SetValue(change.key, change.value, change.state, true);
        }
    }
    m_history.Record(std::move(step));
}

std::vector<KeyNumber> KeyEditor::Discard(const std::vector<KeyNumber>& keys) {
    HistoryStep step = {StepKind::Discard, {}};
    std::vector<KeyNumber> changed;
    for (const KeyNumber key : m_store.WithoutTwins(keys)) {
        if (m_store.IsPending(key)) {
            step.entries.push_back(WholeEntry(m_store, key));
            m_store.Discard(key);
            changed.push_back(key);
        }
    }
    m_history.Record(std::move(step));
    return changed;
}

}  // namespace tamarind
