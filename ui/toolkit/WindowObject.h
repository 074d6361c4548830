#pragma once

#include <windows.h>

namespace tamarind {

class Control;

// The object behind a window of ours, which the window's user data point to.
class WindowObject {
public:
    // Null for windows that are none of ours.
    static WindowObject* FromHandle(HWND window) {
        return window == nullptr
                   ? nullptr
                   : reinterpret_cast<WindowObject*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }

    // The control that it is, or null.
    virtual Control* AsControl() { return nullptr; }

protected:
    ~WindowObject() = default;

    void Bind(HWND window) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    static void Unbind(HWND window) { SetWindowLongPtrW(window, GWLP_USERDATA, 0); }
};

}  // namespace tamarind
