#pragma once

#include <windows.h>

#include <functional>

namespace tamarind {

// Calls a function at intervals while a window lives. The id of the timer is the address of the
// object, so that it never meets the timers that controls set for themselves. The function may stop
// the timer, but must not destroy it.
class Timer {
public:
    explicit Timer(std::function<void()> onTick) : m_onTick(std::move(onTick)) {}
    ~Timer() { Stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Starts anew; the first call comes after `milliseconds`.
    void Start(HWND window, UINT milliseconds);
    // Does nothing if the timer is not running. A tick that Windows has already queued is ignored.
    void Stop();

private:
    static void CALLBACK Procedure(HWND window, UINT message, UINT_PTR id, DWORD time);

    HWND m_window = nullptr;
    std::function<void()> m_onTick;
};

}  // namespace tamarind
