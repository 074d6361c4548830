#pragma once

#include <windows.h>

#include <functional>

namespace tamarind {

// Calls a function again and again while a window lives. Its number is its own address, so that it
// never meets the timers that a control sets for itself.
class Timer {
public:
    explicit Timer(std::function<void()> onTick) : m_onTick(std::move(onTick)) {}
    ~Timer() { Stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void Start(HWND window, UINT milliseconds);
    void Stop();

private:
    static void CALLBACK Procedure(HWND window, UINT message, UINT_PTR id, DWORD time);

    HWND m_window = nullptr;
    std::function<void()> m_onTick;
};

}  // namespace tamarind
