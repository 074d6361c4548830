#include "ui/toolkit/Dpi.h"

#include "ui/toolkit/Handles.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

template <typename Function>
Function UserFunction(const char* name) {
    return LateFunction<Function>(L"user32.dll", name);
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
