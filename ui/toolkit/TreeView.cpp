#include "ui/toolkit/TreeView.h"

#include <cstring>

#include "ui/toolkit/ScopeExit.h"

namespace tamarind {

bool TreeView::Create(HWND parent, int id, TreeViewListener& listener) {
    m_listener = &listener;
    constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_SHOWSELALWAYS |
                             TVS_FULLROWSELECT | TVS_DISABLEDRAGDROP;
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
    m_isChanging = true;
    const ScopeExit changed([this] { m_isChanging = false; });
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
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
    // Showing the end of a long text is not worth hiding the beginnings of all others.
    Send(WM_HSCROLL, SB_PAGELEFT);
}

std::optional<LRESULT> TreeView::OnNotify(NMHDR& header) {
    if (header.code != TVN_SELCHANGEDW || m_isChanging) {
        return std::nullopt;
    }
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    if (change.itemNew.hItem != nullptr) {
        m_listener->OnNodeSelected(change.itemNew.lParam);
    }
    return 0;
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
