#pragma once

#include <windows.h>

#include <optional>

namespace tamarind {

class Control;

// Sees a window's messages before the window does.
class MessageFilter {
public:
    // The answer to a message, or nothing to let the window handle it.
    virtual std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

protected:
    ~MessageFilter() = default;
};

// The object behind a window of ours, which the window's user data point to.
class WindowObject {
public:
    // Null for windows that are none of ours.
    static WindowObject* FromHandle(HWND window) {
        return window == nullptr
                   ? nullptr
                   : reinterpret_cast<WindowObject*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }

    // Puts a filter before a window of ours, or takes it away (null). Other windows have none.
    static void SetFilter(HWND window, MessageFilter* filter) {
        if (WindowObject* const object = FromHandle(window)) {
            object->m_filter = filter;
        }
    }

    // The control that it is, or null.
    virtual Control* AsControl() { return nullptr; }

protected:
    ~WindowObject() = default;

    void Bind(HWND window) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    static void Unbind(HWND window) { SetWindowLongPtrW(window, GWLP_USERDATA, 0); }

    std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) {
        return m_filter != nullptr ? m_filter->FilterMessage(message, wParam, lParam)
                                   : std::nullopt;
    }

private:
    MessageFilter* m_filter = nullptr;
};

}  // namespace tamarind
