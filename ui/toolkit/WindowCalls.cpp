#include "ui/toolkit/WindowCalls.h"

#include <algorithm>
#include <cstring>

namespace tamarind {
namespace {

BOOL CALLBACK SendTo(HWND window, LPARAM message) {
    SendMessageW(window, static_cast<UINT>(message), 0, 0);
    return TRUE;
}

}  // namespace

void SetWindowBounds(HWND window, const RECT& bounds) {
    SetWindowPos(window, nullptr, static_cast<int>(bounds.left), static_cast<int>(bounds.top),
                 static_cast<int>(bounds.right - bounds.left),
                 static_cast<int>(bounds.bottom - bounds.top), SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT BoundsOf(HWND window) {
    RECT bounds{};
    GetWindowRect(window, &bounds);
    return bounds;
}

RECT BoundsInParent(HWND child) {
    RECT bounds = BoundsOf(child);
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

SIZE SizeOf(const RECT& bounds) {
    return {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

RECT ClientAreaOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return area;
}

SIZE ClientSizeOf(HWND window) {
    return SizeOf(ClientAreaOf(window));
}

void SendToDescendants(HWND window, UINT message) {
    EnumChildWindows(window, SendTo, static_cast<LPARAM>(message));
}

void CenterForm(HWND window) {
    const SIZE size = SizeOf(BoundsOf(window));
    const int left = (GetSystemMetrics(SM_CXSCREEN) - size.cx) / 2;
    const int top = (GetSystemMetrics(SM_CYSCREEN) - size.cy) / 2;
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

void SetMirrored(HWND window, bool isMirrored) {
    constexpr LONG_PTR kMirrored = WS_EX_LAYOUTRTL | WS_EX_NOINHERITLAYOUT;
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
    const LONG_PTR wanted = isMirrored ? style | kMirrored : style & ~kMirrored;
    if (wanted != style) {
        SetWindowLongPtrW(window, GWL_EXSTYLE, wanted);
        // The scroll bars are on the other side now, which is a change of the frame.
        SetWindowPos(window, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        InvalidateRect(window, nullptr, TRUE);
    }
}

bool IsKeyDown(int key) {
    return GetKeyState(key) < 0;
}

std::wstring TextOfWindow(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// The clipboard owns the memory once it has taken it.
bool CopyToClipboard(HWND owner, const std::wstring& text) {
    if (!OpenClipboard(owner)) {
        return false;
    }
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    void* const place = memory != nullptr ? GlobalLock(memory) : nullptr;
    bool isTaken = false;
    if (place != nullptr) {
        std::memcpy(place, text.c_str(), bytes);
        GlobalUnlock(memory);
        EmptyClipboard();
        isTaken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    }
    if (!isTaken) {
        GlobalFree(memory);
    }
    CloseClipboard();
    return isTaken;
}

}  // namespace tamarind
