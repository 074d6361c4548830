#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// What lists have in common that ask for their rows when they draw them. At most one row is
// selected.
class OwnerDataList : public Control {
public:
    static constexpr int kNoRow = -1;

    int RowCount() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }
    // kNoRow before the first selection.
    int SelectedRow() const { return m_row; }
    // Scrolls until the row is visible, or with `isPartEnough` a part of it.
    void EnsureVisible(int row, bool isPartEnough = false);

protected:
    // Sets up a list that has been made; `moreStyles` are extended ones beside those of all lists.
    void SetUp(DWORD moreStyles = 0);
    // Adds a column; columns are counted from 0. `format` is LVCFMT_LEFT or another.
    bool AddColumn(std::size_t column, const std::wstring& title, int format = LVCFMT_LEFT);

    // Shows a row as the selected one, or not; m_row stays.
    void ShowSelected(int row, bool isSelected);
    // The row that the list itself calls selected, or kNoRow.
    int RowShownSelected() const;

    // Answers the list's question for a text.
    void Answer(LVITEMW& item, std::wstring text);

    int m_row = kNoRow;

private:
    // The list reads a text after it asked for the next ones.
    std::array<std::wstring, 4> m_texts;
    std::size_t m_nextText = 0;
};

}  // namespace tamarind
