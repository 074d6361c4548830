#include "model/keys/KeyEditor.h"

#include <unordered_set>
#include <utility>

namespace tamarind {

// A change of one key is undone by its rule for that (HistoryEntry); of several keys each comes
// back as it was.
void KeyEditor::Record(HistoryStep step, HistoryEntry::Kind ofOneKey) {
    if (step.entries.size() == 1) {
        step.entries.front().kind = ofOneKey;
    }
    m_history.Record(std::move(step));
}

void KeyEditor::SetValue(KeyNumber key, const std::string& value) {
    Record({StepKind::Value, {WholeEntry(m_store, key)}}, HistoryEntry::Kind::Value);
    m_store.SetValue(key, value, KeyState::ValueSet);
}

std::vector<KeyNumber> KeyEditor::Comment(const std::vector<KeyNumber>& keys) {
    HistoryStep step = {StepKind::Comment, {}};
    std::vector<KeyNumber> changed;
    for (const KeyNumber key : m_store.WithoutTwins(keys)) {
        if (m_store.IsChecked(key)) {
            step.entries.push_back(WholeEntry(m_store, key));
            m_store.SetState(key, KeyState::ToBeCommented);
            changed.push_back(key);
        }
    }
    Record(std::move(step), HistoryEntry::Kind::Toggle);
    return changed;
}

std::vector<KeyNumber> KeyEditor::Delete(const std::vector<KeyNumber>& keys, StepKind kind) {
    HistoryStep step = {kind, {}};
    std::vector<KeyNumber> changed;
    for (const KeyNumber key : m_store.WithoutTwins(keys)) {
        if (!LooksOf(m_store.CurrentState(key), {}).isGhosted) {
            step.entries.push_back(WholeEntry(m_store, key));
            m_store.SetValue(key, {}, KeyState::ToBeDeleted);
            changed.push_back(key);
        }
    }
    Record(std::move(step),
           kind == StepKind::Delete ? HistoryEntry::Kind::Value : HistoryEntry::Kind::Whole);
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
