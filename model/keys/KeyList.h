#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/keys/KeyStore.h"

namespace tamarind {

// Which keys a list shows. Active are those that are, or will be, active in the settings, changed
// those that a save would write, different those with a value other than their known default.
enum class KeyFilter { ShowAll, ShowActive, ShowInactive, ShowChanged, ShowDifferent };

// The text of a row: "name=value" for a key that has a line in the settings or will have one,
// commented out or not, and the bare name for any other.
std::string VisibleText(const KeyRecord& record);

// The line that a key has or will have in the settings, ";" first if it is commented out; empty for
// none.
std::string LineOfState(const KeyRecord& record);

// The rows of the key list: a snapshot of key numbers, taken when a category is shown. A change of
// a record changes the text of its row, but never which rows there are.
class KeyList {
public:
    // Takes the records of a category, or for the root all of the data file, that pass the filter.
    // With `hasMore` those that the data file does not have are among them, each behind the family
    // that it is one of. Returns how many there were before filtering.
    std::size_t Fill(const KeyStore& store, bool isRoot, std::string_view category, bool hasMore,
                     KeyFilter filter);
    // Takes those of these keys that pass the filter, in their order.
    void FillRanked(const KeyStore& store, std::vector<KeyNumber> keys, KeyFilter filter);
    void Clear() { m_rows.clear(); }

    const std::vector<KeyNumber>& All() const { return m_rows; }
    std::size_t Size() const { return m_rows.size(); }
    // `row` is less than Size().
    KeyNumber KeyAt(std::size_t row) const { return m_rows[row]; }
    // The row of a record, or Size() if it is not shown.
    std::size_t RowOf(KeyNumber key) const;

private:
    std::vector<KeyNumber> m_rows;
    bool m_areAscending = true;
};

}  // namespace tamarind
