#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "ui/toolkit/Control.h"

namespace tamarind {

// What lists have in common that ask for their rows when they draw them. Without LVS_SINGLESEL
// several rows can be selected.
class OwnerDataList : public Control {
public:
    static constexpr int kNoRow = -1;

    int RowCount() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }
    // The row whose details are shown: the selected one, or of several the one with the focus.
    // kNoRow before the first selection.
    int SelectedRow() const { return m_row; }
    // Ascending.
    std::vector<int> SelectedRows() const;
    int SelectedCount() const { return static_cast<int>(Send(LVM_GETSELECTEDCOUNT)); }
    // The titles of the columns.
    HWND Header() const { return reinterpret_cast<HWND>(Send(LVM_GETHEADER)); }
    // Selects all rows; the focus stays. Only in lists without LVS_SINGLESEL.
    void SelectAll();
    // Scrolls until the row is visible, or with `isPartEnough` a part of it.
    void EnsureVisible(int row, bool isPartEnough = false);

protected:
    // Sets up a list that has been made; `moreStyles` are extended ones beside those of all lists.
    void SetUp(DWORD moreStyles = 0);
    // Adds a column; columns are counted from 0. `format` is LVCFMT_LEFT or another.
    bool AddColumn(std::size_t column, const std::wstring& title, int format = LVCFMT_LEFT);

    // Shows a row as selected and with the focus, or as neither; m_row stays. kNoRow means all
    // rows.
    void ShowSelected(int row, bool isSelected);
    // The first row that the list itself calls selected, or kNoRow.
    int RowShownSelected() const { return NextRow(kNoRow, LVNI_SELECTED); }
    // The next row after `row` with a state (LVNI_), or kNoRow.
    int NextRow(int row, LPARAM state) const {
        return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(row), state));
    }

    // The list's own font in bold or italics, made when it is needed; to be forgotten when it gets
    // another.
    HFONT FontFor(bool isBold, bool isItalic = false);
    HFONT BoldFont() { return FontFor(true); }
    void ForgetFonts() { m_fonts = {}; }

    // Gives the selected rows the colors of the dark palette, which the list would draw in those
    // of Windows. For the stage before a row is drawn.
    void UseSelectionColors(NMLVCUSTOMDRAW& draw) const;

    // Answers the list's question for a text.
    void Answer(LVITEMW& item, std::wstring text);

    int m_row = kNoRow;

private:
    std::array<UniqueFont, 3> m_fonts;  // bold, italic, both
    // The list reads a text after it asked for the next ones.
    std::array<std::wstring, 4> m_texts;
    std::size_t m_nextText = 0;
};

}  // namespace tamarind
