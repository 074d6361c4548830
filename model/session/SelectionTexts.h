#pragma once

#include <string>

#include "model/session/KeySelection.h"

namespace tamarind {

// What windows say of the selection.
class SelectionTexts {
public:
    SelectionTexts(const Workplace& workplace, const KeySelection& selection)
        : m_workplace(workplace), m_selection(selection) {}

    // The tree's root.
    std::string Root() const;
    // The filter as the menu has it; empty for all keys.
    std::string Filter() const;
    // "12 hidden by View > Active Keys"; empty if no hits are.
    std::string HiddenHits() const;
    // The status bar's text of how many rows there are.
    std::string Counter() const;

private:
    const Workplace& m_workplace;
    const KeySelection& m_selection;
};

}  // namespace tamarind
