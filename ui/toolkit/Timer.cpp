#include "ui/toolkit/Timer.h"

#include "ui/toolkit/CallbackGuard.h"

namespace tamarind {

void Timer::Start(HWND window, UINT milliseconds) {
    Stop();
    if (SetTimer(window, reinterpret_cast<UINT_PTR>(this), milliseconds, Procedure) != 0) {
        m_window = window;
    }
}

void Timer::Stop() {
    if (m_window != nullptr) {
        KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
        m_window = nullptr;
    }
}

void CALLBACK Timer::Procedure(HWND, UINT, UINT_PTR id, DWORD) {
    auto* const self = reinterpret_cast<Timer*>(id);
    Guarded(false, [&] {
        if (self->m_window != nullptr) {
            self->m_onTick();
        }
        return true;
    });
}

}  // namespace tamarind
