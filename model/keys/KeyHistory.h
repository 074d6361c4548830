#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/keys/KeyStore.h"

namespace tamarind {

// One step of the history: a key's value before a change, where the empty text also stands for no
// value, or the toggling of its comment mark.
struct HistoryEntry {
    KeyNumber key = 0;
    bool isCommentToggle = false;
    std::string value;
};

// What can be undone and done again, without limit.
class KeyHistory {
public:
    // A new change ends the chain of changes that could be done again.
    void Record(HistoryEntry entry);
    void Clear();

    // Drops the steps of keys that have other values now than the steps were made for.
    void Forget(const std::vector<KeyNumber>& keys);

    bool CanUndo() const { return !m_undo.empty(); }
    bool CanRedo() const { return !m_redo.empty(); }

    // Replays the newest entry of one list on the store and moves its inverse to the other. The
    // result is the key that changed, if there was an entry. A replay always leaves a pending
    // state, whatever the settings file holds by now.
    std::optional<KeyNumber> Undo(KeyStore& store) { return Replay(m_undo, m_redo, store); }
    std::optional<KeyNumber> Redo(KeyStore& store) { return Replay(m_redo, m_undo, store); }

private:
    using Entries = std::vector<HistoryEntry>;
    static std::optional<KeyNumber> Replay(Entries& from, Entries& to, KeyStore& store);

    Entries m_undo;
    Entries m_redo;
};

}  // namespace tamarind
