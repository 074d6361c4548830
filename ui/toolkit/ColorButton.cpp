#include "ui/toolkit/ColorButton.h"

#include <utility>

#include "ui/toolkit/ColorSwatch.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"

namespace tamarind {
namespace {

constexpr int kFocusMargin = 2;  // pixels at 96 DPI, around the color

bool IsEnterKey(const MSG* message) {
    return message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
}

}  // namespace

bool ColorButton::Create(HWND parent, int id, std::function<void()> onClick) {
    m_onClick = std::move(onClick);
    return CreateControl(WC_BUTTONW, parent, id, WS_TABSTOP | BS_OWNERDRAW);
}

void ColorButton::SetColor(std::optional<COLORREF> color) {
    m_color = color;
    InvalidateRect(Handle(), nullptr, FALSE);
}

// In a dialog the clicks are the dialog's.
std::optional<LRESULT> ColorButton::OnCommand(int, int code) {
    if (!m_onClick || code != BN_CLICKED) {
        return std::nullopt;
    }
    m_onClick();
    return 0;
}

// The focus is shown on the face of the button: on some colors it would not be seen.
std::optional<LRESULT> ColorButton::OnDrawItem(const DRAWITEMSTRUCT& item) {
    const bool isPressed = (item.itemState & ODS_SELECTED) != 0;
    RECT area = item.rcItem;
    if (IsDark()) {
        FrameRect(item.hDC, &area, PaletteBrush(COLOR_BTNSHADOW));
        InflateRect(&area, -2, -2);
    } else {
        DrawEdge(item.hDC, &area, isPressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_ADJUST);
    }
    FillRect(item.hDC, &area, PaletteBrush(COLOR_BTNFACE));
    if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
        DrawFocusRect(item.hDC, &area);
    }
    const int margin = ScaledPixels(kFocusMargin, WindowDpi(Handle()));
    InflateRect(&area, -margin, -margin);
    if (m_color) {
        const UniqueBrush brush(CreateSolidBrush(*m_color));
        FillRect(item.hDC, &area, brush.Get());
    } else {
        DrawCross(item.hDC, area);
    }
    FrameRect(item.hDC, &area, PaletteBrush(COLOR_BTNSHADOW));
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
