#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/keys/KeyList.h"
#include "model/keys/KeyStore.h"
#include "model/session/Workplace.h"

namespace tamarind {

// A part of the current key's description, in UTF-16 units.
struct DescriptionPart {
    std::size_t start = 0;
    std::size_t length = 0;
};

// Hears of the key list.
class KeyListListener {
public:
    virtual ~KeyListListener() = default;
    virtual void OnKeyListChanged() {}       // the list holds other rows
    virtual void OnKeyShown() {}             // another row is current, or none
    virtual void OnKeyChanged(KeyNumber) {}  // its row, if shown, looks different now
    virtual void OnManyKeysChanged() {}      // any row may look different now
    // A search or a favorite led to the current row, maybe to a part of its description.
    virtual void OnWentToKey(const std::optional<DescriptionPart>&) {}
};

// The rows of the key list: which of them are selected, and the current one among them.
class KeyRows {
public:
    KeyRows(const Workplace& workplace, const KeyStore& store)
        : m_workplace(workplace), m_store(store) {}

    Listeners<KeyListListener>& Watchers() { return m_listeners; }

    const KeyStore& Store() const { return m_store; }
    const KeyList& Keys() const { return m_keys; }
    KeyRecord Record(KeyNumber key) const { return m_store.Record(key); }

    // Shows other rows, the first of which is the current one. Without `canEdit` commands on keys
    // have none to act on.
    void Show(KeyList keys, bool canEdit);
    // To be called before the store is filled anew: it has no row until the next Show.
    void Clear();

    // Makes a row the current one, and the only one that is selected.
    void ShowKeyDetails(std::size_t row) { SelectRows({row}, row); }
    // The same, but these rows are selected, ascending; the current one may be none of them.
    void SelectRows(const std::vector<std::size_t>& rows, std::size_t current);
    // The row of a key becomes the current one, and the list scrolls there, maybe to a part of the
    // description. False if the list does not have it.
    bool GoTo(KeyNumber key, const std::optional<DescriptionPart>& part = std::nullopt);
    // Makes the row after the current one the current one. False on the last row.
    bool SelectNextKey();

    // None while the list is empty.
    std::optional<KeyNumber> CurrentKey() const { return m_currentKey; }
    std::optional<std::size_t> CurrentRow() const;
    // The current key as one that commands may act on.
    std::optional<KeyNumber> EditableKey() const;
    // The keys that commands on several keys act on, in the order of the list.
    std::vector<KeyNumber> SelectedKeys() const;
    // The current key's, with line breaks (CR LF); empty without a current row.
    std::string Description() const;

    void TellChanged(KeyNumber key) const { m_listeners.Tell(&KeyListListener::OnKeyChanged, key); }
    // The same for these keys and their twins, and for the commands.
    void TellChanges(const std::vector<KeyNumber>& keys) const;
    // A replayed step: the first of its keys that is in the list becomes the current one.
    void ShowReplayed(const std::vector<KeyNumber>& keys);

private:
    const Workplace& m_workplace;
    const KeyStore& m_store;
    Listeners<KeyListListener> m_listeners;
    KeyList m_keys;
    bool m_canEdit = true;
    std::optional<KeyNumber> m_currentKey;
    std::vector<KeyNumber> m_selectedKeys;
};

}  // namespace tamarind
