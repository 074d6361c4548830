#include "ui/toolkit/VirtualList.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// Posted by the list to itself when rows were selected or deselected: only when it arrives is it
// known which rows are selected in the end.
constexpr UINT kCheckSelection = WM_APP;

constexpr int kEdgeWidth =
    4;  // at the end of a column's title, in pixels: more than it is drawn in

bool StartsWith(const std::wstring& text, const std::wstring& start) {
    const int length = static_cast<int>(start.size());
    return text.size() >= start.size() &&
           CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text.c_str(), length, start.c_str(),
                          length) == CSTR_EQUAL;
}

}  // namespace

bool VirtualList::Create(HWND parent, int id, const std::wstring& columnTitle,
                         VirtualListSource& source, DWORD moreStyles) {
    m_source = &source;
    constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                             LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_NOSORTHEADER;
    if (!CreateControl(WC_LISTVIEWW, parent, id, kStyle | moreStyles)) {
        return false;
    }
    SetUp();
    return AddColumn(0, columnTitle);
}

void VirtualList::SetColumnTitle(const std::wstring& title) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(title.c_str());
    Send(LVM_SETCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
}

void VirtualList::SetImages(HIMAGELIST images) {
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

void VirtualList::SetColors(COLORREF text, COLORREF background) {
    Send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(text));
    Send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(background));
    Send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(background));
    InvalidateRect(Handle(), nullptr, TRUE);
}

void VirtualList::ShowGridLines(bool isVisible) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_GRIDLINES, isVisible ? LVS_EX_GRIDLINES : 0);
}

void VirtualList::SetColumnMargin(int pixels) {
    m_columnMargin = pixels;
    FitColumn();
}

void VirtualList::SetColumns(const std::vector<ListColumn>& columns,
                             const std::vector<int>& order) {
    while (m_columnCount > 1) {
        Send(LVM_DELETECOLUMN, static_cast<WPARAM>(--m_columnCount));
    }
    SetColumnTitle(columns[0].title);
    for (std::size_t column = 1; column < columns.size(); ++column) {
        AddColumn(column, columns[column].title);
        ++m_columnCount;
    }
    const bool hasSeveral = m_columnCount > 1;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_HEADERDRAGDROP,
         hasSeveral ? LVS_EX_HEADERDRAGDROP : 0);
    if (hasSeveral) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            SetColumnWidth(static_cast<int>(column), columns[column].width);
        }
        Send(LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
    }
    FitColumn();
    RedrawRows();
}

std::vector<int> VirtualList::ColumnOrder() const {
    std::vector<int> order(static_cast<std::size_t>(m_columnCount));
    Send(LVM_GETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
    return order;
}

int VirtualList::ColumnWidth(int column) const {
    return static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

void VirtualList::SetColumnWidth(int column, int pixels) {
    Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(pixels, 0));
}

void VirtualList::FitColumn() {
    if (m_columnCount > 1) {
        return;
    }
    const auto width = std::max<LONG>(0, SizeOf(BoundsOf(Handle())).cx - m_columnMargin);
    if (Send(LVM_GETCOLUMNWIDTH, 0) != width) {
        Send(LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(width, 0));
    }
}

void VirtualList::SetRowCount(int count) {
    m_isFilling = true;
    ClearSelection();
    m_row = kNoRow;
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), 0);
    m_isFilling = false;
}

void VirtualList::SelectRow(int row) {
    if (row != m_row || SelectedCount() > 1) {
        m_isFilling = true;
        ClearSelection();
        m_isFilling = false;
        Send(LVM_SETSELECTIONMARK, 0, row);
    }
    ShowSelected(row, true);
    EnsureVisible(row);
}

// Of the one row only, if there are no more: a list control that clears its selection itself may
// look at all rows.
void VirtualList::ClearSelection() {
    if (m_row != kNoRow) {
        ShowSelected(SelectedCount() > 1 ? kNoRow : m_row, false);
    }
}

void VirtualList::RedrawRow(int row) {
    Send(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
}

void VirtualList::EditLabel(int row) {
    SetFocus(Handle());
    Send(LVM_EDITLABELW, static_cast<WPARAM>(row));
}

// The box in the row closes and keeps what was typed when it loses the focus.
void VirtualList::EndLabelEdit() {
    if (Send(LVM_GETEDITCONTROL) != 0) {
        SetFocus(Handle());
    }
}

RECT VirtualList::RowBounds(int row) const {
    RECT bounds{LVIR_BOUNDS, 0, 0, 0};
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds));
    RECT title{};
    if (m_columnCount > 1 && Header_GetItemRect(Header(), 0, &title)) {
        bounds.left += title.left;
    }
    return bounds;
}

int VirtualList::HeaderHeight() const {
    return static_cast<int>(ClientSizeOf(Header()).cy);
}

std::optional<LRESULT> VirtualList::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            OnGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            OnItemChanged();
            return 0;
        case LVN_ODFINDITEMW:
            return OnFindRow(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_BEGINLABELEDITW:
            // TRUE keeps the text from being changed (Microsoft: LVN_BEGINLABELEDIT).
            return m_source->OnRenameRow(reinterpret_cast<NMLVDISPINFOW&>(header).item.iItem)
                       ? FALSE
                       : TRUE;
        case LVN_ENDLABELEDITW:
            return OnEndLabelEdit(reinterpret_cast<NMLVDISPINFOW&>(header).item) ? TRUE : FALSE;
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case NM_DBLCLK:
            if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0 || RowCount() == 0) {
                m_source->OnRowActivated();
            }
            return 0;
        default:
            return std::nullopt;
    }
}

void VirtualList::OnGetDisplayInfo(NMLVDISPINFOW& info) {
    LVITEMW& item = info.item;
    if ((item.mask & LVIF_TEXT) != 0) {
        Answer(item, item.iSubItem == 0 ? m_source->RowText(item.iItem)
                                        : m_source->CellText(item.iItem, item.iSubItem));
    }
    if ((item.mask & LVIF_IMAGE) != 0 && item.iSubItem == 0) {
        item.iImage = m_source->LookOfRow(item.iItem).picture;
    }
}

// In the middle of a change there may be no selected row, or none with the focus.
void VirtualList::OnItemChanged() {
    if (m_isFilling) {
        return;
    }
    const int focused = NextRow(kNoRow, LVNI_FOCUSED);
    if (focused != kNoRow && focused != m_row && SelectedCount() > 0) {
        m_row = focused;
        m_source->OnRowSelected(m_row);
    }
    if (!std::exchange(m_isCheckPosted, true)) {
        PostMessageW(Handle(), kCheckSelection, 0, 0);
    }
}

// The title of a single column goes on to the end of the list, without an edge where the column
// ends. What Windows draws for the header, without a text, stands before that edge.
std::optional<LRESULT> VirtualList::OnHeaderNotify(NMHDR& header) const {
    if (header.code != NM_CUSTOMDRAW || header.hwndFrom != Header() || m_columnCount > 1) {
        return std::nullopt;
    }
    const auto& draw = reinterpret_cast<const NMCUSTOMDRAW&>(header);
    if (draw.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYPOSTPAINT;
    }
    RECT title{};
    if (draw.dwDrawStage == CDDS_POSTPAINT && Header_GetItemRect(header.hwndFrom, 0, &title)) {
        const int from = static_cast<int>(title.right) - kEdgeWidth;
        const int height = static_cast<int>(title.bottom - title.top);
        const LONG end = ClientSizeOf(header.hwndFrom).cx;
        StretchBlt(draw.hdc, from, 0, static_cast<int>(end) - from, height, draw.hdc, from - 1, 0,
                   1, height, SRCCOPY);
    }
    return CDRF_DODEFAULT;
}

// A menu that is asked for over the titles. Nothing for one over the rows, and for the keyboard.
std::optional<LRESULT> VirtualList::OnTitleMenu(LPARAM position) {
    const POINT at{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    const RECT titles = BoundsOf(Header());
    if (position == -1 || !PtInRect(&titles, at)) {
        return std::nullopt;
    }
    m_source->OnTitleMenu(at);
    return 0;
}

std::optional<LRESULT> VirtualList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            FitColumn();
            m_source->OnListPlaced();
            return std::nullopt;
        case WM_MOVE:
            m_source->OnListPlaced();
            return std::nullopt;
        case WM_SETFONT:
            ForgetFonts();
            return std::nullopt;
        case WM_CONTEXTMENU:
            return OnTitleMenu(lParam);
        case WM_NOTIFY:
            return OnHeaderNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_SYSKEYDOWN:
            return wParam == VK_DOWN && m_source->OnListKey(VK_F4) ? std::optional<LRESULT>(0)
                                                                   : std::nullopt;
        case WM_KEYDOWN:
            m_isCharacterHandled = m_source->OnListKey(wParam);
            return m_isCharacterHandled ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_CHAR:
            // A key that was handled does not start a search for a row, at which the control would
            // beep.
            return m_isCharacterHandled || wParam == VK_RETURN ? std::optional<LRESULT>(0)
                                                               : std::nullopt;
        case WM_LBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_RBUTTONDOWN:
            m_source->OnListPressed();
            return std::nullopt;
        case kCheckSelection:
            CheckSelection();
            return 0;
        default:
            return std::nullopt;
    }
}

// A click beside the rows deselects, but the row whose details are shown stays selected.
void VirtualList::CheckSelection() {
    m_isCheckPosted = false;
    if (SelectedCount() > 0) {
        m_source->OnSelectionChanged();
    } else if (m_row >= 0 && m_row < RowCount()) {
        ShowSelected(m_row, true);
    }
}

bool VirtualList::OnEndLabelEdit(const LVITEMW& item) {
    const bool isTaken =
        item.pszText != nullptr && m_source->OnRowRenamed(item.iItem, item.pszText);
    RedrawRow(item.iItem);
    return isTaken;
}

// Finds the row whose text begins with the characters that the user has typed.
LRESULT VirtualList::OnFindRow(const NMLVFINDITEMW& search) const {
    const int count = RowCount();
    if ((search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || search.lvfi.psz == nullptr) {
        return kNoRow;
    }
    const std::wstring start = search.lvfi.psz;
    for (int step = 0; step < count; ++step) {
        const int row = (search.iStart + step) % count;
        if (row >= search.iStart || (search.lvfi.flags & LVFI_WRAP) != 0) {
            if (StartsWith(m_source->RowText(row), start)) {
                return row;
            }
        }
    }
    return kNoRow;
}

LRESULT VirtualList::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT: {
            const RowLook look = m_source->LookOfRow(static_cast<int>(draw.nmcd.dwItemSpec));
            draw.clrText = look.color;
            UseSelectionColors(draw);
            if (look.isBold || look.isItalic) {
                SelectObject(draw.nmcd.hdc, FontFor(look.isBold, look.isItalic));
            }
            return look.marks.empty() ? CDRF_NEWFONT : CDRF_NEWFONT | CDRF_NOTIFYPOSTPAINT;
        }
        case CDDS_ITEMPOSTPAINT: {
            const int row = static_cast<int>(draw.nmcd.dwItemSpec);
            DrawMarks(draw.nmcd.hdc, row, m_source->LookOfRow(row));
            return CDRF_DODEFAULT;
        }
        default:
            return CDRF_DODEFAULT;
    }
}

// Draws the text of the first column again, with its marks. The lines of a focus rectangle above
// and below it stay.
void VirtualList::DrawMarks(HDC dc, int row, const RowLook& look) {
    RECT label{LVIR_LABEL, 0, 0, 0};
    if (look.marks.empty() ||
        !Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&label))) {
        return;
    }
    const bool isSelected = Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
    const bool hasFocus = GetFocus() == Handle();
    const int margin = GetSystemMetrics(SM_CXEDGE);
    InflateRect(&label, -margin, -1);
    const SelectedObject font(dc, FontFor(look.isBold, look.isItalic));
    DrawMarkedLine(
        dc, label, m_source->RowText(row), look.marks,
        isSelected ? SelectionTextColor(hasFocus) : look.color,
        isSelected ? SelectionColor(hasFocus) : static_cast<COLORREF>(Send(LVM_GETBKCOLOR)));
}

std::optional<LRESULT> VirtualList::OnContextMenu(std::optional<POINT> at) {
    if (!at) {
        RECT row{LVIR_LABEL, 0, 0, 0};
        at = POINT{};
        if (m_row >= 0 &&
            Send(LVM_GETITEMRECT, static_cast<WPARAM>(m_row), reinterpret_cast<LPARAM>(&row))) {
            at = POINT{row.left, row.bottom};
        }
        ClientToScreen(Handle(), &*at);
    }
    m_source->OnListMenu(*at);
    return 0;
}

}  // namespace tamarind
