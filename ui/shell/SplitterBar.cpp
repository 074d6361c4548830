#include "ui/shell/SplitterBar.h"

#include <oleacc.h>
#include <windowsx.h>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kKeyStep = 10;  // pixels at 96 DPI

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

}  // namespace

bool SplitterBar::Create(HWND parent, int id) {
    WindowParams params;
    params.className = L"TamarindSplitterBar";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = id;
    return CreateHandle(params);
}

void SplitterBar::Attach(SplitterBarListener& listener, SplitDirection direction) {
    m_listener = &listener;
    m_cursor = direction == SplitDirection::Vertical ? IDC_SIZEWE : IDC_SIZENS;
}

std::optional<AccessibleInfo> SplitterBar::Describe() const {
    if (!m_name) {
        return std::nullopt;
    }
    AccessibleInfo info;
    info.name = m_name();
    info.role = ROLE_SYSTEM_SEPARATOR;
    return info;
}

LRESULT SplitterBar::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            OnMouseDown(PointOf(lParam));
            return 0;
        case WM_MOUSEMOVE:
            OnMouseMove(PointOf(lParam), wParam);
            return 0;
        case WM_LBUTTONUP:
            OnMouseUp();
            return 0;
        case WM_CAPTURECHANGED:
            Cancel(false);
            return 0;
        case WM_KEYDOWN:
            OnKey(wParam);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            InvalidateRect(Handle(), nullptr, TRUE);
            return 0;
        case WM_PAINT:
            Paint();
            return 0;
        case WM_SETCURSOR:
            SetCursor(LoadCursorW(nullptr, m_cursor));
            return TRUE;
        default:
            return Window::HandleMessage(message, wParam, lParam);
    }
}

void SplitterBar::Paint() const {
    PAINTSTRUCT paint{};
    if (const HDC dc = BeginPaint(Handle(), &paint)) {
        const RECT area = ClientAreaOf(Handle());
        FillRect(dc, &area, PaletteBrush(GetFocus() == Handle() ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
        EndPaint(Handle(), &paint);
    }
}

// An arrow key is a short drag. Enter and Escape give the focus back to the window.
void SplitterBar::OnKey(WPARAM key) {
    const int step = ScaledPixels(kKeyStep, WindowDpi(Handle()));
    const bool isVertical = m_cursor == IDC_SIZEWE;
    if (key == VK_RETURN || key == VK_ESCAPE) {
        SetFocus(GetAncestor(Handle(), GA_ROOT));
    } else if (key == (isVertical ? VK_LEFT : VK_UP) || key == (isVertical ? VK_RIGHT : VK_DOWN)) {
        const bool isBack = key == VK_LEFT || key == VK_UP;
        m_listener->OnBarDown({0, 0});
        m_listener->OnBarMove({isBack ? -step : step, isBack ? -step : step});
        m_listener->OnBarUp();
    }
}

std::optional<LRESULT> SplitterBar::FilterMessage(UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
        Cancel(true);
        return 0;
    }
    return std::nullopt;
}

// For the time of the drag the keys of the window with the focus are filtered, for the Escape key.
void SplitterBar::OnMouseDown(POINT at) {
    m_isDragging = true;
    SetCapture(Handle());
    m_focusWindow = GetFocus();
    SetFilter(m_focusWindow, this);
    m_listener->OnBarDown(at);
}

void SplitterBar::OnMouseMove(POINT at, WPARAM buttons) {
    SetCursor(LoadCursorW(nullptr, m_cursor));
    if (m_isDragging && (buttons & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON)) == MK_LBUTTON) {
        m_listener->OnBarMove(at);
    }
}

void SplitterBar::OnMouseUp() {
    if (m_isDragging) {
        EndDrag();
        m_listener->OnBarUp();
    }
}

void SplitterBar::Cancel(bool goesBack) {
    if (m_isDragging) {
        EndDrag();
        m_listener->OnBarCancel(goesBack);
    }
}

void SplitterBar::EndDrag() {
    // First, since releasing the mouse tells the bar that it lost it.
    m_isDragging = false;
    SetFilter(m_focusWindow, nullptr);
    m_focusWindow = nullptr;
    if (GetCapture() == Handle()) {
        ReleaseCapture();
    }
}

}  // namespace tamarind
