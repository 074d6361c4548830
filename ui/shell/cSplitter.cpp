// Positions are in twips and stay as the user has chosen them: m_splitPosition is what is wanted,
// and each layout shows it as well as the present size of the container allows (ShownPosition). So
// a window that is made small and large again has its bar at the old place. A drag starts from
// where the bar is shown.

#include "ui/shell/cSplitter.h"

#include <windowsx.h>

#include <utility>

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

void cSplitter::CreateSplitter(HWND Container, SplitterBar& Splitter, HWND Pane1, HWND Pane2,
                               const SplitterOptions& options, int dpi) {
    m_dpi = dpi;
    mobjContainerControl = Container;
    mobjSplitterControl = &Splitter;
    m_pane1 = Pane1;
    m_pane2 = Pane2;
    for (const HWND window : {Pane1, Pane2, Splitter.Handle()}) {
        if (GetParent(window) != Container) {
            SetParent(window, Container);
        }
    }
    SetWindowPos(Splitter.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Splitter.Attach(*this, options.Direction);
    m_geometry.direction = options.Direction;
    m_geometry.splitterSize = options.SplitterSize;
    m_geometry.leftMargin = options.LeftMargin;
    m_geometry.topMargin = options.TopMargin;
    m_geometry.rightMargin = options.RightMargin;
    m_geometry.bottomMargin = options.BottomMargin;
    m_splitPosition = options.SplitterStartPos;
    WindowObject::SetFilter(Container, this);
    const SIZE area = ClientSizeOf(Container);
    m_geometry.containerWidth = ToTwips(Pixels{area.cx}, m_dpi);
    m_geometry.containerHeight = ToTwips(Pixels{area.cy}, m_dpi);
    Layout();
}

std::optional<LRESULT> cSplitter::FilterMessage(UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_SIZE) {
        OnContainerSize(Pixels{GET_X_LPARAM(lParam)}, Pixels{GET_Y_LPARAM(lParam)});
    } else if (message == WM_STYLECHANGED) {
        // A container that becomes mirrored, or stops being so, has its panes on the other sides.
        Layout();
    }
    return std::nullopt;
}

void cSplitter::OnContainerSize(Pixels width, Pixels height) {
    const Twips before = IsVertical() ? m_geometry.containerWidth : m_geometry.containerHeight;
    m_geometry.containerWidth = ToTwips(width, m_dpi);
    m_geometry.containerHeight = ToTwips(height, m_dpi);
    const Twips now = IsVertical() ? m_geometry.containerWidth : m_geometry.containerHeight;
    if (m_keepsSecondSize) {
        m_splitPosition = m_splitPosition + (now - before);
    }
    Layout();
}

void cSplitter::Resize(Twips ContainerHeight, Twips ContainerWidth) {
    const Pixels height = ToPixels(ContainerHeight, m_dpi);
    const Pixels width = ToPixels(ContainerWidth, m_dpi);
    SetWindowPos(mobjContainerControl, nullptr, 0, 0, width.value, height.value,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Layout();
}

void cSplitter::SwapPanels() {
    std::swap(m_pane1, m_pane2);
    Layout();
}

void cSplitter::SetLeftPanelVisible(bool isVisible) {
    m_geometry.isFirstVisible = isVisible;
    UpdateVisibility();
}

void cSplitter::SetRightPanelVisible(bool isVisible) {
    m_geometry.isSecondVisible = isVisible;
    UpdateVisibility();
}

void cSplitter::SetVisible(bool isVisible) {
    m_isVisible = isVisible;
    ShowWindow(mobjContainerControl, isVisible ? SW_SHOWNA : SW_HIDE);
}

void cSplitter::UpdateVisibility() {
    const bool showsFirst = m_geometry.isFirstVisible;
    const bool showsSecond = m_geometry.isSecondVisible;
    Layout();
    ShowWindow(mobjSplitterControl->Handle(), showsFirst && showsSecond ? SW_SHOWNA : SW_HIDE);
    ShowWindow(m_pane1, showsFirst ? SW_SHOWNA : SW_HIDE);
    ShowWindow(m_pane2, showsSecond ? SW_SHOWNA : SW_HIDE);
    ShowWindow(mobjContainerControl, showsFirst || showsSecond ? SW_SHOWNA : SW_HIDE);
}

void cSplitter::OnBarDown(POINT at) {
    m_dragStart = at;
    m_positionBeforeDrag = m_splitPosition;
}

void cSplitter::OnBarMove(POINT at) {
    const LONG moved = IsVertical() ? at.x - m_dragStart.x : at.y - m_dragStart.y;
    if (moved == 0) {
        return;
    }
    const SplitterGeometry geometry = Geometry();
    const Twips shown = ShownPosition(geometry, m_splitPosition);
    const Twips wanted = shown + ToTwips(Pixels{moved}, m_dpi);
    if (AcceptsDrag(geometry, wanted)) {
        m_splitPosition = wanted;
        Layout();
        UpdateWindow(mobjContainerControl);
    }
}

void cSplitter::OnBarCancel(bool goesBack) {
    if (goesBack) {
        m_splitPosition = m_positionBeforeDrag;
        Layout();
    }
}

SplitterGeometry cSplitter::Geometry() const {
    SplitterGeometry geometry = m_geometry;
    geometry.minFirst = MinLeftPanelWidth;
    geometry.minSecond = MinRightPanelWidth;
    return geometry;
}

void cSplitter::Layout() {
    const SplitterPlaces places = LayOutSplitter(Geometry(), m_splitPosition);
    // Not every system repaints all of a mirrored window whose children have moved.
    const LONG_PTR style = GetWindowLongPtrW(mobjContainerControl, GWL_EXSTYLE);
    const UINT flags = (style & WS_EX_LAYOUTRTL) != 0 ? SWP_NOCOPYBITS : 0;
    HDWP batch = BeginDeferWindowPos(3);
    batch = Place(batch, m_pane1, places.first, flags);
    batch = Place(batch, m_pane2, places.second, flags);
    // What was below the bar must not be copied with it.
    batch = Place(batch, mobjSplitterControl->Handle(), places.bar, SWP_NOCOPYBITS);
    if (batch != nullptr) {
        EndDeferWindowPos(batch);
    }
}

// Each edge is converted to pixels by itself, so that neighbours share the same edge. Converting
// widths would leave gaps.
HDWP cSplitter::Place(HDWP batch, HWND window, const std::optional<TwipsRect>& at,
                      UINT flags) const {
    if (!at || batch == nullptr) {
        return batch;
    }
    const int left = ToPixels(at->left, m_dpi).value;
    const int top = ToPixels(at->top, m_dpi).value;
    const int right = ToPixels(at->right, m_dpi).value;
    const int bottom = ToPixels(at->bottom, m_dpi).value;
    return DeferWindowPos(batch, window, nullptr, left, top, right - left, bottom - top,
                          SWP_NOZORDER | SWP_NOACTIVATE | flags);
}

}  // namespace tamarind
