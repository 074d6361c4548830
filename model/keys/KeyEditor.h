#pragma once

#include <string>

#include "model/keys/KeyHistory.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The user's changes of keys. Each one sets a pending state in the store and adds a step to the
// history; nothing is written to a file. Changes apply to all twins of a key.
class KeyEditor {
public:
    explicit KeyEditor(KeyStore& store) : m_store(store) {}

    // The value is kept as it is given, and the key becomes active with the next save.
    void SetValue(KeyNumber key, const std::string& value);

    // Comments an active key out, with its value. Returns false, and does nothing, for any other
    // key.
    bool Comment(KeyNumber key);

    // Deletes a key that has a line, commented out or not. Returns false for an absent key.
    bool Delete(KeyNumber key);

    // The key that changed, or nothing if the list was empty.
    std::optional<KeyNumber> Undo() { return m_history.Undo(m_store); }
    std::optional<KeyNumber> Redo() { return m_history.Redo(m_store); }

    bool CanUndo() const { return m_history.CanUndo(); }
    bool CanRedo() const { return m_history.CanRedo(); }
    void ClearHistory() { m_history.Clear(); }
    // Drops the steps of keys that another program has changed.
    void Forget(const std::vector<KeyNumber>& keys) { m_history.Forget(keys); }

private:
    void RecordValue(KeyNumber key);

    KeyStore& m_store;
    KeyHistory m_history;
};

}  // namespace tamarind
