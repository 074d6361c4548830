#include "ui/toolkit/Dpi.h"

#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

// Windows 7 lacks these functions and could not start a program that is linked to them.
template <typename Function>
Function UserFunction(const char* name) {
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    const FARPROC address = user != nullptr ? GetProcAddress(user, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

int DpiOfScreen() {
    const ScreenDC screen;
    return GetDeviceCaps(screen.Get(), LOGPIXELSX);
}

}  // namespace

int SystemDpi() {
    static const int dpi = DpiOfScreen();
    return dpi;
}

int WindowDpi(HWND window) {
    static const auto getDpi = UserFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const int dpi = getDpi != nullptr ? static_cast<int>(getDpi(window)) : 0;
    return dpi > 0 ? dpi : SystemDpi();
}

int SystemMetric(int index, int dpi) {
    static const auto getMetric = UserFunction<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    return getMetric != nullptr ? getMetric(index, static_cast<UINT>(dpi))
                                : Scaled(GetSystemMetrics(index), dpi, SystemDpi());
}

}  // namespace tamarind
