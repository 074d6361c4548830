#include "ui/toolkit/Control.h"

#include <windowsx.h>

namespace tamarind {

bool Control::CreateControl(const wchar_t* className, HWND parent, int id, DWORD style,
                            DWORD extendedStyle) {
    m_window = CreateWindowExW(extendedStyle, className, L"", style | WS_CHILD | WS_CLIPSIBLINGS, 0,
                               0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               GetModuleHandleW(nullptr), nullptr);
    return m_window != nullptr && m_own.Attach(m_window) && m_parent.Attach(parent);
}

void Control::SetBounds(const RECT& bounds) {
    SetWindowPos(m_window, nullptr, bounds.left, bounds.top, bounds.right - bounds.left,
                 bounds.bottom - bounds.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Control::Show(bool isVisible) {
    ShowWindow(m_window, isVisible ? SW_SHOWNA : SW_HIDE);
}

void Control::Enable(bool isEnabled) {
    if ((IsWindowEnabled(m_window) != FALSE) != isEnabled) {
        EnableWindow(m_window, isEnabled);
    }
}

void Control::SetBorder(BorderLook border) {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_EXSTYLE));
    const DWORD newStyle =
        (style & ~DWORD{WS_BORDER}) | (border == BorderLook::Single ? WS_BORDER : 0);
    const DWORD newExtended = (extended & ~DWORD{WS_EX_CLIENTEDGE}) |
                              (border == BorderLook::Sunken ? WS_EX_CLIENTEDGE : 0);
    if (newStyle != style || newExtended != extended) {
        SetWindowLongPtrW(m_window, GWL_STYLE, static_cast<LONG_PTR>(newStyle));
        SetWindowLongPtrW(m_window, GWL_EXSTYLE, static_cast<LONG_PTR>(newExtended));
        SetWindowPos(m_window, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void Control::SetFont(UniqueFont font) {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
    m_font = std::move(font);
}

std::optional<LRESULT> Control::FilterMessage(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
    if (window != m_window) {
        return FilterParentMessage(message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        m_window = nullptr;
        return std::nullopt;
    }
    return OnMessage(message, wParam, lParam);
}

std::optional<LRESULT> Control::FilterParentMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NOTIFY: {
            auto& header = *reinterpret_cast<NMHDR*>(lParam);
            return header.hwndFrom == m_window ? OnNotify(header) : std::nullopt;
        }
        case WM_COMMAND:
            return reinterpret_cast<HWND>(lParam) == m_window && m_window != nullptr
                       ? OnCommand(LOWORD(wParam), HIWORD(wParam))
                       : std::nullopt;
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<HWND>(lParam) == m_window
                       ? OnColors(reinterpret_cast<HDC>(wParam))
                       : std::nullopt;
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(wParam) != m_window) {
                return std::nullopt;
            }
            return OnContextMenu(
                lParam == -1 ? std::nullopt
                             : std::optional(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Control::OnNotify(NMHDR&) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnCommand(int, int) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnColors(HDC) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnContextMenu(std::optional<POINT>) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

}  // namespace tamarind
