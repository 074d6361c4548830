#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/keys/KeyStore.h"

namespace tamarind {

enum class KeyFilter { ShowAll, ShowActive, ShowInactive };

// The text of a record's row: a line of the settings file for a key that is or will be in it, else
// the key's bare name.
std::string VisibleText(const KeyRecord& record);

// The rows that the key list shows: a snapshot taken when a category is shown. A change of a record
// changes what its row says, never which rows there are.
class KeyList {
public:
    // Takes the records of a category, or of all for the root, that pass the filter. Returns how
    // many there were before filtering.
    std::size_t Fill(const KeyStore& store, bool isRoot, std::string_view category,
                     KeyFilter filter);
    void Clear() { m_rows.clear(); }

    std::size_t Size() const { return m_rows.size(); }
    KeyNumber KeyAt(std::size_t row) const { return m_rows[row]; }
    // The row of a record, or Size() when it is not shown.
    std::size_t RowOf(KeyNumber key) const;

private:
    std::vector<KeyNumber> m_rows;  // ascending
};

}  // namespace tamarind
