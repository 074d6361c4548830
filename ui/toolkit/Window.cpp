#include "ui/toolkit/Window.h"

#include "ui/toolkit/CallbackGuard.h"
#include "ui/toolkit/Control.h"
#include "ui/toolkit/DarkMode.h"

namespace tamarind {

Window::~Window() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
}

bool Window::Register(const WindowParams& params) {
    WNDCLASSEXW info{};
    info.cbSize = sizeof(info);
    if (GetClassInfoExW(GetModuleHandleW(nullptr), params.className, &info)) {
        return true;
    }
    info.lpfnWndProc = Procedure;
    info.hInstance = GetModuleHandleW(nullptr);
    info.hIcon = params.icon;
    info.hIconSm = params.smallIcon;
    info.hCursor = LoadCursorW(nullptr, params.cursor);
    info.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    info.lpszClassName = params.className;
    return RegisterClassExW(&info) != 0;
}

bool Window::CreateHandle(const WindowParams& params) {
    if (!Register(params)) {
        return false;
    }
    const RECT& at = params.bounds;
    return CreateWindowExW(params.extendedStyle, params.className, params.text, params.style,
                           at.left, at.top, at.right - at.left, at.bottom - at.top, params.parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(params.id)),
                           GetModuleHandleW(nullptr), this) != nullptr;
}

LRESULT Window::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* const created = static_cast<Window*>(create->lpCreateParams);
        created->m_window = window;
        created->Bind(window);
    }
    auto* const self = static_cast<Window*>(FromHandle(window));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    // An exception in WM_CREATE keeps the window from being created at all.
    const LRESULT failed = message == WM_CREATE ? -1 : 0;
    const LRESULT result = Guarded(failed, [&] {
        if (message == WM_GETOBJECT && self->Describe()) {
            if (const auto object = AnswerGetObject(window, wParam, lParam)) {
                return *object;
            }
        }
        auto answer = self->Filter(message, wParam, lParam);
        if (!answer) {
            answer = Control::Reflect(message, wParam, lParam);
        }
        if (!answer) {
            answer = AnswerPaletteMessage(window, message, wParam, lParam);
        }
        return answer ? *answer : self->HandleMessage(message, wParam, lParam);
    });
    if (message == WM_NCDESTROY) {
        Unbind(window);
        self->m_window = nullptr;
    }
    return result;
}

}  // namespace tamarind
