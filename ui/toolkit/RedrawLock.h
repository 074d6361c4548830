#pragma once

#include <windows.h>

namespace tamarind {

// Holds back the painting of a window and its children until the end of the scope, so that many
// changes show as one. Does nothing for a hidden window: WM_SETREDRAW with TRUE would make it
// visible (Microsoft: WM_SETREDRAW).
class RedrawLock {
public:
    explicit RedrawLock(HWND window) : m_window(IsWindowVisible(window) ? window : nullptr) {
        if (m_window != nullptr) {
            SendMessageW(m_window, WM_SETREDRAW, FALSE, 0);
        }
    }
    ~RedrawLock() {
        if (m_window != nullptr) {
            SendMessageW(m_window, WM_SETREDRAW, TRUE, 0);
            RedrawWindow(m_window, nullptr, nullptr,
                         RDW_ERASE | RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN);
        }
    }
    RedrawLock(const RedrawLock&) = delete;
    RedrawLock& operator=(const RedrawLock&) = delete;

private:
    HWND m_window;
};

}  // namespace tamarind
