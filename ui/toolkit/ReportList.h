#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/DialogTexts.h"
#include "ui/toolkit/OwnerDataList.h"

namespace tamarind {

// A column of a ReportList.
struct ReportColumn {
    std::wstring title;
    bool isNumber = false;  // numbers stand at the right; not in the first column
};

// A column of texts for each of these numbers of titles.
std::vector<ReportColumn> TextColumns(const TextByNumber& text,
                                      std::span<const std::uint16_t> titles);

// How the text of a cell looks.
enum class CellTone { Normal, Pale, Removed, Added, Heading };

// What the rows of a list say, and who hears of changes. Only `text` is required.
struct ReportRows {
    std::function<std::wstring(int row, int column)> text;
    std::function<CellTone(int row, int column)> tone;
    // Another row was selected, or none any more (ReportList::kNoRow). Of several rows it is the
    // one with the focus.
    std::function<void(int row)> onSelected;
    // The user has double-clicked a row, pressed Space on the selected one, or clicked a check box.
    std::function<void(int row)> onToggled;
    // The user has double-clicked a row; instead of onToggled.
    std::function<void(int row)> onActivated;
    // The user has clicked a row anywhere; instead of onToggled.
    std::function<void(int row)> onClicked;
    // The list has lost the focus.
    std::function<void()> onLeft;
    // With this, each row has a check box.
    std::function<bool(int row)> isChecked;
    // A key was pressed; a virtual-key code. Returns whether it was handled.
    std::function<bool(WPARAM key)> onKey;
};

// A list with several columns in a dialog. Its control in the template has the styles LVS_REPORT
// and LVS_OWNERDATA, and LVS_SINGLESEL unless several rows can be selected. It asks for its texts
// when it draws them, so its length costs nothing. The columns share its width by the lengths of
// their texts.
class ReportList final : public OwnerDataList {
public:
    // A dash, for cells that have nothing to show.
    static constexpr wchar_t kNothing[] = L"\u2014";

    // Makes sure that Windows knows this kind of control before a dialog is made from its template.
    ReportList();

    // Takes the control of the dialog over. False if there is none.
    bool Attach(HWND dialog, int id, const std::vector<ReportColumn>& columns, ReportRows rows);

    // Makes one outside of dialogs; without columns it has a single one that has no title. It is
    // hidden until it is shown. False if Windows cannot create it.
    bool Create(HWND parent, int id, ReportRows rows,
                const std::vector<ReportColumn>& columns = {});

    // The height of so many rows, in pixels, and the width that the longest of the texts asks for,
    // both with the frame of the list.
    SIZE SizeFor(int rows) const;

    // Shows the check boxes or not; at first they are shown if isChecked is there.
    void ShowCheckBoxes(bool isVisible);

    // Shows other column titles, as many as there were.
    void SetTitles(std::vector<std::wstring> titles);

    // Shows other rows than before. None of them is selected, and onSelected is not called. While
    // the texts change, the list must be empty (0), because screen readers ask for texts at any
    // time.
    void SetRowCount(int count);
    // Selects a row, which calls onSelected if it was another one, and scrolls it into view.
    void SelectRow(int row);
    // Selects one more row.
    void AlsoSelectRow(int row) { ShowSelected(row, true); }
    // To be called when the rows say something else.
    void Redraw();

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetUpColumns(const std::vector<ReportColumn>& columns);
    void OnGetDisplayInfo(LVITEMW& item);
    void OnItemChanged();
    void OnClick(const NMITEMACTIVATE& click) const;
    void OnDoubleClick(int row) const;
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void SetTone(NMLVCUSTOMDRAW& draw, CellTone tone);
    void Toggle(int row) const;
    // Measures titles and the first rows, and fits the columns.
    void MeasureTexts();
    void FitColumns();

    ReportRows m_rows;
    bool m_hasCheckBoxes = false;
    std::vector<std::wstring> m_titles;
    std::vector<int> m_wantedWidths;  // of the columns, in pixels
};

}  // namespace tamarind
