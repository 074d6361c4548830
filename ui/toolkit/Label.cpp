#include "ui/toolkit/Label.h"

namespace tamarind {

bool Label::Create(HWND parent, int id) {
    return CreateControl(WC_STATICW, parent, id,
                         SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS | SS_CENTERIMAGE);
}

// Windows draws only what a larger size adds, but the dots are elsewhere now.
std::optional<LRESULT> Label::OnMessage(UINT message, WPARAM, LPARAM) {
    if (message == WM_SIZE) {
        InvalidateRect(Handle(), nullptr, TRUE);
    }
    return std::nullopt;
}

void Label::SetColors(COLORREF text, COLORREF background) {
    m_color = text;
    m_background = background;
    m_brush.Reset(CreateSolidBrush(background));
}

std::optional<LRESULT> Label::OnColors(HDC dc) {
    if (!m_brush) {
        return std::nullopt;
    }
    SetTextColor(dc, m_color);
    SetBkColor(dc, m_background);
    return reinterpret_cast<LRESULT>(m_brush.Get());
}

void Label::SetText(const std::wstring& text) {
    if (text != m_text) {
        m_text = text;
        SetWindowTextW(Handle(), text.c_str());
    }
}

}  // namespace tamarind
