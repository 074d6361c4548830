#pragma once

#include <string>

#include "ui/toolkit/OwnerDataList.h"

namespace tamarind {

// How a row looks beside its text.
struct RowLook {
    int picture = I_IMAGENONE;
    COLORREF color = 0;
};

// Knows what the rows of a list say, and hears of them.
class VirtualListSource {
public:
    virtual std::wstring RowText(int row) const = 0;
    virtual RowLook LookOfRow(int row) const = 0;
    // Another row became the selected one, by mouse, keyboard or program.
    virtual void OnRowSelected(int row) = 0;
    virtual void OnListMenu(POINT at) = 0;
    // A row was clicked twice, or the list while it has none.
    virtual void OnRowActivated() = 0;
    // A virtual-key code; whether it is done with.
    virtual bool OnListKey(WPARAM key) = 0;
    // A mouse button went down on the list.
    virtual void OnListPressed() = 0;
    // The list has another place or size.
    virtual void OnListPlaced() = 0;

    // Lists with LVS_EDITLABELS only. Whether the user may change a row's text, which he is about
    // to do.
    virtual bool OnRenameRow(int) { return false; }
    // He entered another text for the row; whether it is taken.
    virtual bool OnRowRenamed(int, const std::wstring&) { return false; }

protected:
    ~VirtualListSource() = default;
};

// A list of one column that asks for its rows when it draws them, so that its length costs nothing.
// Once a row is selected there is always a selected one.
class VirtualList final : public OwnerDataList {
public:
    // `moreStyles` beside those that all such lists have: LVS_EDITLABELS, LVS_NOCOLUMNHEADER.
    bool Create(HWND parent, int id, const std::wstring& columnTitle, VirtualListSource& source,
                DWORD moreStyles = 0);

    void SetColumnTitle(const std::wstring& title);
    void SetImages(HIMAGELIST images);
    void SetColors(COLORREF text, COLORREF background);
    void ShowGridLines(bool isVisible);
    // The column stays narrower than the list by so many pixels.
    void SetColumnMargin(int pixels);

    // Other rows than before: none of them is selected.
    void SetRowCount(int count);
    // Selects a row and brings it into view.
    void SelectRow(int row);
    void RedrawRow(int row);

    // Lets the user change a row's text, if the source does. The list gets the focus.
    void EditLabel(int row);
    // Takes over the text that is being changed, if one is.
    void EndLabelEdit();

    // In pixels of the list.
    RECT RowBounds(int row) const;
    // The height of the column's title at the top of the list, in pixels.
    int HeaderHeight() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnContextMenu(std::optional<POINT> at) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnItemChanged(const NMLISTVIEW& change);
    void OnGetDisplayInfo(NMLVDISPINFOW& info);
    LRESULT OnFindRow(const NMLVFINDITEMW& search) const;
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
    void ClearSelection();
    void FitColumn();
    void CheckSelection();
    bool OnEndLabelEdit(const LVITEMW& item);

    VirtualListSource* m_source = nullptr;
    int m_columnMargin = 0;
    bool m_isFilling = false;
};

}  // namespace tamarind
