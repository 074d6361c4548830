#include "ui/toolkit/PushButton.h"

#include <utility>

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

bool PushButton::Create(HWND parent, int id, std::function<void()> onClick) {
    m_onClick = std::move(onClick);
    return CreateControl(WC_BUTTONW, parent, id, WS_TABSTOP | BS_PUSHBUTTON);
}

std::wstring PushButton::Text() const {
    return TextOfWindow(Handle());
}

void PushButton::SetText(const std::wstring& text) {
    SetWindowTextW(Handle(), text.c_str());
}

std::optional<LRESULT> PushButton::OnCommand(int, int code) {
    if (code != BN_CLICKED) {
        return std::nullopt;
    }
    m_onClick();
    return 0;
}

}  // namespace tamarind
