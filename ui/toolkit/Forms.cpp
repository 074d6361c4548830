#include "ui/toolkit/Forms.h"

#include <algorithm>

namespace tamarind {

void CenterForm(HWND window) {
    RECT at{};
    GetWindowRect(window, &at);
    const int left = (GetSystemMetrics(SM_CXSCREEN) - (at.right - at.left)) / 2;
    const int top = (GetSystemMetrics(SM_CYSCREEN) - (at.bottom - at.top)) / 2;
    SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT MovedOntoMonitor(const RECT& bounds) {
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (!GetMonitorInfoW(MonitorFromRect(&bounds, MONITOR_DEFAULTTONEAREST), &info)) {
        return bounds;
    }
    const RECT& area = info.rcWork;
    const LONG width = std::min(bounds.right - bounds.left, area.right - area.left);
    const LONG height = std::min(bounds.bottom - bounds.top, area.bottom - area.top);
    const LONG left = std::clamp(bounds.left, area.left, area.right - width);
    const LONG top = std::clamp(bounds.top, area.top, area.bottom - height);
    return {left, top, left + width, top + height};
}

}  // namespace tamarind
