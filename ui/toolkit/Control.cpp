#include "ui/toolkit/Control.h"

#include <windowsx.h>

#include "ui/toolkit/CallbackGuard.h"
#include "ui/toolkit/DarkMode.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

Control::~Control() {
    Detach();
}

bool Control::CreateControl(const wchar_t* className, HWND parent, int id, DWORD style,
                            DWORD extendedStyle) {
    return Attach(CreateWindowExW(
        extendedStyle, className, L"", style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr));
}

bool Control::AttachControl(HWND parent, int id) {
    return Attach(GetDlgItem(parent, id));
}

// The window procedure is replaced directly. SetWindowSubclass looks up a window property at every
// message, which under Wine is a round trip to another process.
bool Control::Attach(HWND window) {
    m_window = window;
    if (m_window == nullptr) {
        return false;
    }
    Bind(m_window);
    m_original = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    if (IsDark()) {
        ApplyPaletteToControl(m_window);
    }
    return true;
}

void Control::Detach() {
    if (m_window != nullptr) {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_original));
        Unbind(m_window);
        m_window = nullptr;
    }
}

LRESULT CALLBACK Control::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Control* const self = WindowObject::FromHandle(window)->AsControl();
    const WNDPROC original = self->m_original;
    const auto answer = Guarded(std::optional<LRESULT>(0), [&] {
        if (message == WM_GETOBJECT && (self->m_describer || self->m_childDescriber)) {
            return AnswerGetObject(window, wParam, lParam);
        }
        const auto filtered = self->Filter(message, wParam, lParam);
        return filtered ? filtered : self->OnMessage(message, wParam, lParam);
    });
    if (message == WM_NCDESTROY) {
        self->Detach();
    }
    return answer ? *answer : CallWindowProcW(original, window, message, wParam, lParam);
}

std::optional<AccessibleInfo> Control::Describe() const {
    return m_describer ? std::optional(m_describer(GetDlgCtrlID(m_window))) : std::nullopt;
}

std::optional<AccessibleInfo> Control::DescribeChild(LONG child) const {
    return m_childDescriber ? m_childDescriber(child) : std::nullopt;
}

void Control::SetBounds(const RECT& bounds) {
    SetWindowBounds(m_window, bounds);
}

void Control::Show(bool isVisible) {
    ShowWindow(m_window, isVisible ? SW_SHOWNA : SW_HIDE);
}

void Control::Enable(bool isEnabled) {
    if ((IsWindowEnabled(m_window) != FALSE) != isEnabled) {
        EnableWindow(m_window, isEnabled);
    }
}

void Control::ShowMarksInTips(UINT getToolTips) const {
    if (const auto tips = reinterpret_cast<HWND>(Send(getToolTips))) {
        SetWindowLongPtrW(tips, GWL_STYLE, GetWindowLongPtrW(tips, GWL_STYLE) | TTS_NOPREFIX);
    }
}

void Control::SetBorder(BorderLook border) {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_EXSTYLE));
    const DWORD newStyle =
        (style & ~DWORD{WS_BORDER}) | (border == BorderLook::Single ? WS_BORDER : 0);
    const DWORD newExtended = (extended & ~DWORD{WS_EX_CLIENTEDGE}) |
                              (border == BorderLook::Sunken ? WS_EX_CLIENTEDGE : 0);
    if (newStyle != style) {
        SetWindowLongPtrW(m_window, GWL_STYLE, static_cast<LONG_PTR>(newStyle));
    }
    if (newExtended != extended) {
        SetWindowLongPtrW(m_window, GWL_EXSTYLE, static_cast<LONG_PTR>(newExtended));
    }
    if (newStyle != style || newExtended != extended) {
        SetWindowPos(m_window, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void Control::UseFont(HFONT font) {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    m_font = UniqueFont();
}

void Control::SetFont(UniqueFont font) {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
    m_font = std::move(font);
}

namespace {

Control* ControlOf(HWND window) {
    WindowObject* const object = WindowObject::FromHandle(window);
    return object != nullptr ? object->AsControl() : nullptr;
}

}  // namespace

std::optional<LRESULT> Control::Reflect(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NOTIFY: {
            auto& header = *reinterpret_cast<NMHDR*>(lParam);
            Control* const control = ControlOf(header.hwndFrom);
            return control != nullptr ? control->OnNotify(header) : std::nullopt;
        }
        case WM_COMMAND: {
            Control* const control = ControlOf(reinterpret_cast<HWND>(lParam));
            return control != nullptr ? control->OnCommand(LOWORD(wParam), HIWORD(wParam))
                                      : std::nullopt;
        }
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC: {
            Control* const control = ControlOf(reinterpret_cast<HWND>(lParam));
            return control != nullptr ? control->OnColors(reinterpret_cast<HDC>(wParam))
                                      : std::nullopt;
        }
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            Control* const control = ControlOf(item.hwndItem);
            return control != nullptr ? control->OnDrawItem(item) : std::nullopt;
        }
        case WM_CONTEXTMENU: {
            Control* const control = ControlOf(reinterpret_cast<HWND>(wParam));
            const auto at = lParam == -1
                                ? std::nullopt
                                : std::optional(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            return control != nullptr ? control->OnContextMenu(at) : std::nullopt;
        }
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

std::optional<LRESULT> Control::OnDrawItem(const DRAWITEMSTRUCT&) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnContextMenu(std::optional<POINT>) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

}  // namespace tamarind
