#include "ui/toolkit/EditBox.h"

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

bool EditBox::Create(HWND parent, int id, EditBoxListener& listener) {
    m_listener = &listener;
    return CreateControl(
        WC_EDITW, parent, id,
        WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOHIDESEL);
}

void EditBox::SetText(const std::wstring& text) {
    SetWindowTextW(Handle(), text.c_str());
}

std::wstring EditBox::Text() const {
    return TextOfWindow(Handle());
}

void EditBox::SetMaxLength(std::size_t units) {
    Send(EM_SETLIMITTEXT, units);
    Send(EM_SETREADONLY, units == 0 ? TRUE : FALSE);
}

void EditBox::Select(std::size_t start, std::size_t length) {
    Send(EM_SETSEL, start, static_cast<LPARAM>(start + length));
    Send(EM_SCROLLCARET);
}

std::optional<LRESULT> EditBox::OnCommand(int, int code) {
    if (code == EN_CHANGE) {
        m_listener->OnTextChanged();
    }
    return 0;
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
