#pragma once

#include <windows.h>

#include <optional>

#include "ui/toolkit/Accessible.h"

namespace tamarind {

class Control;

// Sees the messages of a window before the window itself does. A splitter follows the size of its
// container in this way.
class MessageFilter {
public:
    // The answer to a message; nothing leaves it to the window.
    virtual std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

protected:
    ~MessageFilter() = default;
};

// The object that belongs to a window of ours. The user data of the window (GWLP_USERDATA) point to
// it. Base of Window, Control and Dialog.
class WindowObject {
public:
    // Null for windows that are not ours. The window must belong to this program.
    static WindowObject* FromHandle(HWND window) {
        return window == nullptr
                   ? nullptr
                   : reinterpret_cast<WindowObject*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }

    // Puts a filter before a window of ours, or removes it (null). There is one filter at a time;
    // nothing happens for other windows.
    static void SetFilter(HWND window, MessageFilter* filter) {
        if (WindowObject* const object = FromHandle(window)) {
            object->m_filter = filter;
        }
    }

    // What a screen reader is told of the window; nothing leaves it to Windows.
    virtual std::optional<AccessibleInfo> Describe() const { return std::nullopt; }

    // The same of a part of it, such as a row, by the number that Windows gives that part: from 1.
    virtual std::optional<AccessibleInfo> DescribeChild(LONG /*child*/) const {
        return std::nullopt;
    }

    // The Control that this is, or null.
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
