#pragma once

#include <string>

#include "model/keys/KeySearch.h"
#include "model/session/KeySelection.h"

namespace tamarind {

// Find: steps from hit to hit through the keys of the data file. Each one shows what it finds;
// without a hit, or after the last one, a message says so.
class KeyFinding {
public:
    KeyFinding(Workplace& workplace, KeySelection& selection)
        : m_workplace(workplace), m_selection(selection) {}

    // What is searched, and how.
    KeySearch& Search() { return m_search; }
    const KeySearch& Search() const { return m_search; }
    void SetSearchText(const std::string& text);
    bool FindNextString();  // whether there was a hit

private:
    Workplace& m_workplace;
    KeySelection& m_selection;
    KeySearch m_search;
};

}  // namespace tamarind
