#pragma once

#include <string>
#include <vector>

#include "model/keys/KeyHistory.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// A change of one key that is to be: its value, spaces around it included, and the pending state
// that comes with it.
struct KeyChange {
    KeyNumber key = 0;
    KeyState state = KeyState::ValueSet;
    std::string value;
};

// The user's changes of keys. Each one sets pending states in the store and adds a step to the
// history; nothing is written to a file. Changes apply to all twins of a key: of several that are
// given, one counts.
class KeyEditor {
public:
    explicit KeyEditor(KeyStore& store) : m_store(store) {}

    // The value is kept as it is given, and the key becomes active with the next save.
    void SetValue(KeyNumber key, const std::string& value);

    // Comments the active keys among these out, with their values. Returns those.
    std::vector<KeyNumber> Comment(const std::vector<KeyNumber>& keys);

    // Deletes the keys among these that have a line, commented out or not. Returns those. The step
    // is of the kind Delete or Reset.
    std::vector<KeyNumber> Delete(const std::vector<KeyNumber>& keys,
                                  StepKind kind = StepKind::Delete);

    // Makes these changes pending, in one step.
    void Change(StepKind kind, const std::vector<KeyChange>& changes);

    // Drops the pending changes of these keys. Returns those that had one.
    std::vector<KeyNumber> Discard(const std::vector<KeyNumber>& keys);

    // Adds a step for what has happened to keys already: `former` is how they were.
    void RecordStep(StepKind kind, std::vector<HistoryEntry> former) {
        m_history.Record({kind, std::move(former)});
    }

    // The keys that changed; none if the list was empty.
    std::vector<KeyNumber> Undo() { return m_history.Undo(m_store); }
    std::vector<KeyNumber> Redo() { return m_history.Redo(m_store); }

    const KeyHistory& History() const { return m_history; }
    void ClearHistory() { m_history.Clear(); }
    // Drops the entries of keys that another program has changed.
    void Forget(const std::vector<KeyNumber>& keys) { m_history.Forget(keys); }

private:
    void Record(HistoryStep step, HistoryEntry::Kind ofOneKey);

    KeyStore& m_store;
    KeyHistory m_history;
};

}  // namespace tamarind
