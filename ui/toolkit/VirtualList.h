#pragma once

#include <string>
#include <vector>

#include "ui/toolkit/MarkedText.h"
#include "ui/toolkit/OwnerDataList.h"

namespace tamarind {

// What a row looks like besides its text.
struct RowLook {
    int picture = I_IMAGENONE;
    COLORREF color = 0;
    bool isBold = false;
    bool isItalic = false;
    std::vector<MarkedPart> marks;  // in the text of the first column
};

// A column of a list.
struct ListColumn {
    std::wstring title;
    int width = 0;  // pixels
};

// Knows what the rows of a list say, and hears what the user does with them. Rows are counted from
// 0. The list may ask for a row that no longer exists, so these functions must check it.
class VirtualListSource {
public:
    virtual std::wstring RowText(int row) const = 0;
    // What stands in a column other than the first, which has the row's text.
    virtual std::wstring CellText(int, int) const { return {}; }
    virtual RowLook LookOfRow(int row) const = 0;
    // Another row has been selected, by the user or by the program; of several, another one has got
    // the focus.
    virtual void OnRowSelected(int row) = 0;
    // Other rows than before are selected, besides that one.
    virtual void OnSelectionChanged() {}
    // A context menu is asked for; `at` is in screen pixels.
    virtual void OnListMenu(POINT at) = 0;
    // The same for the title of the columns.
    virtual void OnTitleMenu(POINT) {}
    // A row was double-clicked, or anything in a list without rows.
    virtual void OnRowActivated() = 0;
    // A key was pressed; `key` is a virtual-key code. Alt+Down comes as F4, its twin in drop-downs.
    // Returns whether it was handled.
    virtual bool OnListKey(WPARAM key) = 0;
    // A mouse button was pressed on the list.
    virtual void OnListPressed() = 0;
    // The place or the size of the list has changed.
    virtual void OnListPlaced() = 0;

    // Only in lists with LVS_EDITLABELS: the user is about to change the text of a row. Returns
    // whether they may.
    virtual bool OnRenameRow(int) { return false; }
    // The user has entered another text for a row. Returns whether it is taken.
    virtual bool OnRowRenamed(int, const std::wstring&) { return false; }

protected:
    ~VirtualListSource() = default;
};

// A list that asks for its rows when it draws them, so that its length costs
// nothing. It begins with one column. From the first selection on there is always a selected row,
// until SetRowCount.
class VirtualList final : public OwnerDataList {
public:
    // `moreStyles` are added to the styles of all such lists: LVS_SINGLESEL, LVS_EDITLABELS,
    // LVS_NOCOLUMNHEADER.
    // `source` must outlive the list. False if Windows cannot create it.
    bool Create(HWND parent, int id, const std::wstring& columnTitle, VirtualListSource& source,
                DWORD moreStyles = 0);

    void SetColumnTitle(const std::wstring& title);
    // The picture list must outlive the control or be replaced first.
    void SetImages(HIMAGELIST images);
    void SetColors(COLORREF text, COLORREF background);
    void ShowGridLines(bool isVisible);
    // Shows these columns, the first of which has the text and the picture of the row; `order` has
    // their places in this vector from the left. If there are several, the user can move them.
    void SetColumns(const std::vector<ListColumn>& columns, const std::vector<int>& order);
    std::vector<int> ColumnOrder() const;
    int ColumnWidth(int column) const;
    void SetColumnWidth(int column, int pixels);
    // A single column is narrower than the list by this number of pixels.
    void SetColumnMargin(int pixels);

    // Shows other rows than before. None of them is selected, and the source is not told.
    void SetRowCount(int count);
    // Selects a row, and no other, and scrolls it into view. If another one was selected,
    // OnRowSelected is called.
    void SelectRow(int row);
    // To be called when a row, or any row, says something else.
    void RedrawRow(int row);
    void RedrawRows() { InvalidateRect(Handle(), nullptr, FALSE); }

    // Lets the user change the text of a row, if the source allows it. The list gets the focus.
    void EditLabel(int row);
    // Ends a change of a text as the Enter key does, if one is going on.
    void EndLabelEdit();

    // In pixels of the list's client area; the left edge is that of the first column.
    RECT RowBounds(int row) const;
    // The height in pixels of the column's title above the rows.
    int HeaderHeight() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnContextMenu(std::optional<POINT> at) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnItemChanged();
    void OnGetDisplayInfo(NMLVDISPINFOW& info);
    LRESULT OnFindRow(const NMLVFINDITEMW& search) const;
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void DrawMarks(HDC dc, int row, const RowLook& look);
    std::optional<LRESULT> OnHeaderNotify(NMHDR& header) const;
    std::optional<LRESULT> OnTitleMenu(LPARAM position);
    void ClearSelection();
    void FitColumn();
    void CheckSelection();
    bool OnEndLabelEdit(const LVITEMW& item);

    VirtualListSource* m_source = nullptr;
    int m_columnMargin = 0;
    int m_columnCount = 1;
    bool m_isFilling = false;
    bool m_isCheckPosted = false;
    bool m_isCharacterHandled = false;  // of the key that was pressed
};

}  // namespace tamarind
