#include "ui/toolkit/ColorButton.h"

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kFocusMargin = 2;  // pixels at 96 DPI, around the colour

bool IsEnterKey(const MSG* message) {
    return message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
}

}  // namespace

void ColorButton::SetColor(COLORREF color) {
    m_color = color;
    InvalidateRect(Handle(), nullptr, FALSE);
}

// The focus is shown on the face of the button: on some colours it would not be seen.
std::optional<LRESULT> ColorButton::OnDrawItem(const DRAWITEMSTRUCT& item) {
    const bool isPressed = (item.itemState & ODS_SELECTED) != 0;
    RECT area = item.rcItem;
    DrawEdge(item.hDC, &area, isPressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_ADJUST);
    FillRect(item.hDC, &area, GetSysColorBrush(COLOR_BTNFACE));
    if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
        DrawFocusRect(item.hDC, &area);
    }
    const int margin = ScaledPixels(kFocusMargin, WindowDpi(Handle()));
    InflateRect(&area, -margin, -margin);
    const UniqueBrush brush(CreateSolidBrush(m_color));
    FillRect(item.hDC, &area, brush.Get());
    FrameRect(item.hDC, &area, GetSysColorBrush(COLOR_BTNSHADOW));
    return TRUE;
}

// A dialog presses its default button on Enter, unless the control with the focus asks for the key.
std::optional<LRESULT> ColorButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            if (IsEnterKey(reinterpret_cast<const MSG*>(lParam))) {
                return DLGC_BUTTON | DLGC_WANTMESSAGE;
            }
            return std::nullopt;
        case WM_KEYDOWN:
            if (wParam != VK_RETURN) {
                return std::nullopt;
            }
            SendMessageW(GetParent(Handle()), WM_COMMAND,
                         MAKEWPARAM(GetDlgCtrlID(Handle()), BN_CLICKED),
                         reinterpret_cast<LPARAM>(Handle()));
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tamarind
