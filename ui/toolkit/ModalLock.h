#pragma once

#include <windows.h>

#include <vector>

namespace tamarind {

// Disables the thread's other visible windows as long as a modal one is open. Windows itself
// disables the owner of that, and must be the one to enable it again.
class ModalLock {
public:
    explicit ModalLock(HWND owner);
    ~ModalLock();
    ModalLock(const ModalLock&) = delete;
    ModalLock& operator=(const ModalLock&) = delete;

private:
    static BOOL CALLBACK Collect(HWND window, LPARAM self);

    HWND m_owner;
    std::vector<HWND> m_disabled;
};

}  // namespace tamarind
