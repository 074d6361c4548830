#include "ui/toolkit/ModalLock.h"

namespace tamarind {

ModalLock::ModalLock(HWND owner) : m_owner(owner) {
    EnumThreadWindows(GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(this));
    for (const HWND window : m_disabled) {
        EnableWindow(window, FALSE);
    }
}

ModalLock::~ModalLock() {
    for (const HWND window : m_disabled) {
        EnableWindow(window, TRUE);
    }
}

BOOL CALLBACK ModalLock::Collect(HWND window, LPARAM self) {
    auto& lock = *reinterpret_cast<ModalLock*>(self);
    if (window != lock.m_owner && IsWindowVisible(window) && IsWindowEnabled(window)) {
        lock.m_disabled.push_back(window);
    }
    return TRUE;
}

}  // namespace tamarind
