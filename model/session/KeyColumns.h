#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/keys/KeyStore.h"
#include "model/session/KeyValues.h"
#include "model/session/Listeners.h"
#include "model/session/Workplace.h"

namespace tamarind {

// The columns of the key list. That of the key is always there.
enum class KeyColumn : std::uint8_t { Key, State, Default, Meaning, Category, Section };

struct ShownColumn {
    KeyColumn column = KeyColumn::Key;
    std::int32_t width = 0;  // twips

    friend bool operator==(const ShownColumn&, const ShownColumn&) = default;
};

class KeyColumnsListener {
public:
    virtual ~KeyColumnsListener() = default;
    virtual void OnColumnsChanged() {}  // other ones are shown
};

// Which columns the key list shows, and what their cells say. They are kept in the own settings, in
// their order from the left: "Key:4000,State:1800". Without them there is the key alone, or beside
// it, while a screen reader runs, its state.
class KeyColumns {
public:
    KeyColumns(Workplace& workplace, const KeyStore& store, const KeyValues& values)
        : m_workplace(workplace), m_store(store), m_values(values) {}

    Listeners<KeyColumnsListener>& Watchers() { return m_listeners; }

    // In their order from the left.
    std::vector<ShownColumn> Shown() const;
    // Shows or hides a column; the new one is the last.
    void Toggle(KeyColumn column);
    // The user has given them another order or other widths.
    void Keep(const std::vector<ShownColumn>& columns);

    std::string Title(KeyColumn column) const;
    std::string CellText(KeyNumber key, KeyColumn column) const;

private:
    Workplace& m_workplace;
    const KeyStore& m_store;
    const KeyValues& m_values;
    Listeners<KeyColumnsListener> m_listeners;
};

}  // namespace tamarind
