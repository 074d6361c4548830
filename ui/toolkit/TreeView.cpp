#include "ui/toolkit/TreeView.h"

#include <algorithm>
#include <cstring>

#include "ui/toolkit/Palette.h"
#include "ui/toolkit/ScopeExit.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

bool TreeView::Create(HWND parent, int id, TreeViewListener& listener) {
    m_listener = &listener;
    constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_SHOWSELALWAYS |
                             TVS_FULLROWSELECT | TVS_DISABLEDRAGDROP | TVS_NOHSCROLL;
    if (!CreateControl(WC_TREEVIEWW, parent, id, kStyle)) {
        return false;
    }
    Send(TVM_SETEXTENDEDSTYLE, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    ShowMarksInTips(TVM_GETTOOLTIPS);
    return true;
}

void TreeView::SetImages(HIMAGELIST images) {
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
}

void TreeView::SetColors(COLORREF text, COLORREF background) {
    Send(TVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(text));
    Send(TVM_SETBKCOLOR, 0, static_cast<LPARAM>(background));
}

void TreeView::Clear() {
    Remove(TVI_ROOT);
}

void TreeView::Remove(HTREEITEM item) {
    m_isChanging = true;
    const ScopeExit changed([this] { m_isChanging = false; });
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item));
}

HTREEITEM TreeView::Add(HTREEITEM parent, const TreeNode& node) {
    TVINSERTSTRUCTW insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.itemex.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_STATE;
    insert.itemex.stateMask = TVIS_BOLD;
    insert.itemex.state = node.isBold ? TVIS_BOLD : 0;
    insert.itemex.pszText = const_cast<wchar_t*>(node.text.c_str());
    insert.itemex.iImage = node.picture;
    insert.itemex.iSelectedImage = node.selectedPicture;
    insert.itemex.lParam = node.data;
    return reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TreeView::Expand(HTREEITEM item) {
    Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
}

void TreeView::Select(HTREEITEM item) {
    m_isChanging = true;
    const ScopeExit changed([this] { m_isChanging = false; });
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
}

std::optional<LPARAM> TreeView::DataOfChild(LONG child) const {
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem =
        reinterpret_cast<HTREEITEM>(Send(TVM_MAPACCIDTOHTREEITEM, static_cast<WPARAM>(child)));
    const bool isThere =
        item.hItem != nullptr && Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) != 0;
    return isThere ? std::optional(item.lParam) : std::nullopt;
}

std::optional<LRESULT> TreeView::OnNotify(NMHDR& header) {
    if (header.code == NM_CUSTOMDRAW) {
        return OnCustomDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    }
    if (header.code != TVN_SELCHANGEDW || m_isChanging) {
        return std::nullopt;
    }
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    if (change.itemNew.hItem != nullptr) {
        m_listener->OnNodeSelected(change.itemNew.lParam);
    }
    return 0;
}

LRESULT TreeView::OnCustomDraw(NMTVCUSTOMDRAW& draw) const {
    const auto hits = m_listener->HitsOfNode(draw.nmcd.lItemlParam);
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return m_listener->CountsHits() || IsDark() ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
        case CDDS_ITEMPREPAINT:
            if (hits == std::size_t{0} && (draw.nmcd.uItemState & CDIS_SELECTED) == 0) {
                draw.clrText = PaletteColor(COLOR_GRAYTEXT);
            }
            if (IsDark() && (draw.nmcd.uItemState & CDIS_SELECTED) != 0) {
                const bool hasFocus = GetFocus() == Handle();
                draw.clrText = SelectionTextColor(hasFocus);
                draw.clrTextBk = SelectionColor(hasFocus);
            }
            return hits.value_or(0) > 0 ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT;
        case CDDS_ITEMPOSTPAINT:
            if (hits) {
                DrawHits(draw, *hits);
            }
            return CDRF_DODEFAULT;
        default:
            return CDRF_DODEFAULT;
    }
}

// Behind the text, or at the edge of a tree that is too narrow for both.
void TreeView::DrawHits(const NMTVCUSTOMDRAW& draw, std::size_t hits) const {
    RECT label{};
    std::memcpy(&label, &draw.nmcd.dwItemSpec, sizeof(draw.nmcd.dwItemSpec));
    if (!Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&label))) {
        return;
    }
    const std::wstring text = L"(" + std::to_wstring(hits) + L")";
    const SelectedObject font(draw.nmcd.hdc, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
    SIZE size{};
    GetTextExtentPoint32W(draw.nmcd.hdc, text.c_str(), static_cast<int>(text.size()), &size);
    const LONG gap = size.cy / 3;
    const LONG edge = ClientSizeOf(Handle()).cx - size.cx - gap;
    label.left = std::min(label.right + gap, edge);
    label.right = label.left + size.cx;
    SetBkMode(draw.nmcd.hdc, TRANSPARENT);
    if (label.left == edge) {
        const RECT behind{edge - gap, label.top, edge + size.cx + gap, label.bottom};
        const UniqueBrush brush(CreateSolidBrush(draw.clrTextBk));
        FillRect(draw.nmcd.hdc, &behind, brush.Get());
    }
    SetTextColor(draw.nmcd.hdc, draw.clrText);
    DrawTextW(draw.nmcd.hdc, text.c_str(), -1, &label, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

// Selects the node as a click does: anywhere in its row.
void TreeView::SelectAt(POINT at) {
    TVHITTESTINFO hit{};
    hit.pt = at;
    ScreenToClient(Handle(), &hit.pt);
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (hit.hItem != nullptr) {
        Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(hit.hItem));
    }
}

std::optional<LRESULT> TreeView::OnContextMenu(std::optional<POINT> at) {
    if (!at) {
        RECT row{};
        const auto selected = Send(TVM_GETNEXTITEM, TVGN_CARET);
        // TVM_GETITEMRECT expects the handle of the item in the first bytes of the rectangle that
        // it fills in.
        std::memcpy(&row, &selected, sizeof(selected));
        at = POINT{};
        if (selected != 0 && Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&row))) {
            at = POINT{row.left, row.bottom};
        }
        ClientToScreen(Handle(), &*at);
    } else {
        SelectAt(*at);
    }
    m_listener->OnTreeMenu(*at);
    return 0;
}

}  // namespace tamarind
