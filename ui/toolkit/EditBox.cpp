#include "ui/toolkit/EditBox.h"

namespace tamarind {

bool EditBox::Create(HWND parent, int id) {
    if (!CreateControl(WC_EDITW, parent, id,
                       WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL)) {
        return false;
    }
    Send(EM_SETLIMITTEXT, 0);  // as much as there is room for
    return true;
}

void EditBox::SetText(const std::wstring& text) {
    SetWindowTextW(Handle(), text.c_str());
}

void EditBox::SetReadOnly(bool isReadOnly) {
    Send(EM_SETREADONLY, isReadOnly ? TRUE : FALSE);
}

void EditBox::SetColors(COLORREF text, COLORREF background) {
    m_text = text;
    m_background = background;
    m_brush.Reset(CreateSolidBrush(background));
    InvalidateRect(Handle(), nullptr, TRUE);
}

void EditBox::SetMargins(int pixels) {
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(pixels, pixels));
}

std::optional<LRESULT> EditBox::OnColors(HDC dc) {
    if (!m_brush) {
        return std::nullopt;
    }
    SetTextColor(dc, m_text);
    SetBkColor(dc, m_background);
    return reinterpret_cast<LRESULT>(m_brush.Get());
}

}  // namespace tamarind
