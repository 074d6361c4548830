#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/OwnerDataList.h"

namespace tamarind {

struct ReportColumn {
    std::wstring title;
    bool isNumber = false;  // numbers stand at the right; not in the first column
};

// What a list's rows say and who hears of them. All but the text may be left out.
struct ReportRows {
    std::function<std::wstring(int row, int column)> text;
    // Whether a text is grey.
    std::function<bool(int row, int column)> isPale;
    // Another row is the selected one, or none: ReportList::kNoRow.
    std::function<void(int row)> onSelected;
    // The user clicked a row twice, or pressed Space on the selected one.
    std::function<void(int row)> onToggled;
};

// A list of several columns, which a dialog's template has with the styles LVS_REPORT,
// LVS_OWNERDATA and LVS_SINGLESEL. It asks for its texts when it draws them. The columns share its
// width as their texts need it.
class ReportList final : public OwnerDataList {
public:
    // A dash, in a cell for what does not exist.
    static constexpr wchar_t kNothing[] = L"\u2014";

    // Makes sure that Windows has such controls; the template's dialog comes later.
    ReportList();

    bool Attach(HWND dialog, int id, const std::vector<ReportColumn>& columns, ReportRows rows);

    // Other rows than before: none of them is selected, which nobody is told. While the texts
    // change the list has to be empty, since screen readers ask for them at any time.
    void SetRowCount(int count);
    // Selects a row and brings it into view.
    void SelectRow(int row);
    // The rows say something else now.
    void Redraw();

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnGetDisplayInfo(LVITEMW& item);
    void OnItemChanged();
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
    void Toggle(int row) const;
    void MeasureTexts();
    void FitColumns();

    ReportRows m_rows;
    std::vector<std::wstring> m_titles;
    std::vector<int> m_wantedWidths;  // of the columns, in pixels
};

}  // namespace tamarind
