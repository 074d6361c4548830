#pragma once

#include <string>

#include "model/keys/KeyHistory.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The user's changes of keys: each sets a pending state and leaves an entry in the history.
class KeyEditor {
public:
    explicit KeyEditor(KeyStore& store) : m_store(store) {}

    // The value is kept as it is given, and the key becomes an active one.
    void SetValue(KeyNumber key, const std::string& value);

    // Comments an active key out; it keeps its value. Returns false for any other key.
    bool Comment(KeyNumber key);

    // Deletes a key that is present, commented out or not. Returns false for an absent one.
    bool Delete(KeyNumber key);

    // The key that changed, if there is one.
    std::optional<KeyNumber> Undo() { return m_history.Undo(m_store); }
    std::optional<KeyNumber> Redo() { return m_history.Redo(m_store); }

    bool CanUndo() const { return m_history.CanUndo(); }
    bool CanRedo() const { return m_history.CanRedo(); }
    void ClearHistory() { m_history.Clear(); }
    void Forget(const std::vector<KeyNumber>& keys) { m_history.Forget(keys); }

private:
    void RecordValue(KeyNumber key);

    KeyStore& m_store;
    KeyHistory m_history;
};

}  // namespace tamarind
