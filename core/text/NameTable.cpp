#include "core/text/NameTable.h"

#include <bit>

namespace tamarind {

// At most half of the slots are in use after this.
void NameTable::Reset(std::size_t count) {
    *this = NameTable();
    m_slots.assign(std::bit_ceil(2 * count + 2), kNone);
}

}  // namespace tamarind
