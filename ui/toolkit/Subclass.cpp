#include "ui/toolkit/Subclass.h"

#include <commctrl.h>

#include "ui/toolkit/Unexpected.h"

namespace tamarind {

bool Subclass::Attach(HWND window) {
    Detach();
    // The object's address tells apart several filters before one window.
    const auto self = reinterpret_cast<UINT_PTR>(this);
    if (!SetWindowSubclass(window, Procedure, self, self)) {
        return false;
    }
    m_window = window;
    return true;
}

void Subclass::Detach() {
    if (m_window != nullptr) {
        RemoveWindowSubclass(m_window, Procedure, reinterpret_cast<UINT_PTR>(this));
        m_window = nullptr;
    }
}

LRESULT CALLBACK Subclass::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR data) {
    auto* const self = reinterpret_cast<Subclass*>(data);
    const auto answer = Guarded(std::optional<LRESULT>(0), [&] {
        return self->m_filter.FilterMessage(window, message, wParam, lParam);
    });
    if (message == WM_NCDESTROY) {
        self->Detach();
    }
    return answer ? *answer : DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace tamarind
