#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/keys/KeyStore.h"

namespace tamarind {

// One step of the history: the value of a key before a change, or the change of its comment mark.
// The state before is not recorded: an empty value stands for no value, too, so that undoing a
// change of "A=" marks the key for deletion.
struct HistoryEntry {
    KeyNumber key = 0;
    bool isCommentToggle = false;
    std::string value;
};

// What can be undone and redone, without a limit. Entries are plain data; KeyEditor records them.
class KeyHistory {
public:
    // Adds a step. What was undone before can no longer be redone.
    void Record(HistoryEntry entry);
    void Clear();

    // Drops the steps of keys whose values are no longer those that the steps began from.
    void Forget(const std::vector<KeyNumber>& keys);

    bool CanUndo() const { return !m_undo.empty(); }
    bool CanRedo() const { return !m_redo.empty(); }

    // Applies the newest entry of one list to the store and puts its inverse into the other list.
    // Returns the key that changed, or nothing if there was no entry. The key always gets a pending
    // state, even if its value is then the one in the settings.
    std::optional<KeyNumber> Undo(KeyStore& store) { return Replay(m_undo, m_redo, store); }
    std::optional<KeyNumber> Redo(KeyStore& store) { return Replay(m_redo, m_undo, store); }

private:
    using Entries = std::vector<HistoryEntry>;
    static std::optional<KeyNumber> Replay(Entries& from, Entries& to, KeyStore& store);

    Entries m_undo;
    Entries m_redo;
};

}  // namespace tamarind
