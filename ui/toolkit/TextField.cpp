#include "ui/toolkit/TextField.h"

#include <utility>

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr WPARAM kControlA = 1;

}  // namespace

bool TextField::Create(HWND parent, int id, TextFieldEvents events) {
    m_events = std::move(events);
    if (!CreateControl(WC_EDITW, parent, id, WS_TABSTOP | ES_LEFT | ES_AUTOHSCROLL,
                       WS_EX_CLIENTEDGE)) {
        return false;
    }
    Send(EM_SETLIMITTEXT, 0);  // 0: the largest limit that Windows has
    return true;
}

std::wstring TextField::Text() const {
    return TextOfWindow(Handle());
}

// A text that is shown already keeps its selection, and costs nothing.
void TextField::SetText(const std::wstring& text) {
    if (text != Text()) {
        m_isSetting = true;
        SetWindowTextW(Handle(), text.c_str());
        m_isSetting = false;
    }
}

void TextField::Insert(const std::wstring& text) {
    Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void TextField::SelectEnd() {
    const auto end = static_cast<WPARAM>(GetWindowTextLengthW(Handle()));
    Send(EM_SETSEL, end, static_cast<LPARAM>(end));
}

void TextField::SetCue(const std::wstring& text) {
    Send(EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void TextField::SetReadOnly(bool isReadOnly) {
    if (((GetWindowLongPtrW(Handle(), GWL_STYLE) & ES_READONLY) != 0) != isReadOnly) {
        Send(EM_SETREADONLY, isReadOnly ? TRUE : FALSE);
    }
}

std::optional<LRESULT> TextField::OnCommand(int, int code) {
    if (code == EN_CHANGE && !m_isSetting) {
        m_events.onTyped();
    } else if (code == EN_SETFOCUS) {
        m_events.onFocus();
    }
    return 0;
}

std::optional<LRESULT> TextField::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return m_events.onKey(wParam, message == WM_SYSKEYDOWN) ? std::optional<LRESULT>(0)
                                                                    : std::nullopt;
        case WM_CHAR:
            if (wParam == kControlA) {
                SelectAll();
                return 0;
            }
            return wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB || wParam == L'\n'
                       ? std::optional<LRESULT>(0)
                       : std::nullopt;
        default:
            return std::nullopt;
    }
}

}  // namespace tamarind
