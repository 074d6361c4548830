#pragma once

#include <windows.h>

#include <vector>

namespace tamarind {

// Disables the other visible windows of the thread while a modal one is open. The owner of the
// modal window is left out: Windows itself disables it, and must be the one that enables it again.
class ModalLock {
public:
    // `owner` is that of the modal window, and may be null.
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
