#pragma once

#include "ui/shell/SplitterBar.h"
#include "ui/shell/SplitterLayout.h"

namespace tamarind {

struct SplitterOptions {
    SplitDirection Direction = SplitDirection::Vertical;
    Twips SplitterStartPos;
    Twips SplitterSize;
    Twips LeftMargin;
    Twips TopMargin;
    Twips RightMargin;
    Twips BottomMargin;
};

// Lays two panes out in a container, with a bar between them that the user drags. It follows the
// container's size by itself.
class cSplitter final : private MessageFilter, private SplitterBarListener {
public:
    cSplitter() = default;
    ~cSplitter() { WindowObject::SetFilter(mobjContainerControl, nullptr); }
    cSplitter(const cSplitter&) = delete;
    cSplitter& operator=(const cSplitter&) = delete;

    // Smallest sizes of the panes while dragging.
    Twips MinLeftPanelWidth{1200};
    Twips MinRightPanelWidth{1200};

    // Takes over the windows; all of them outlive the splitter or are destroyed by Windows.
    void CreateSplitter(HWND Container, SplitterBar& Splitter, HWND Pane1, HWND Pane2,
                        const SplitterOptions& options, int dpi);

    // Sets the container's size, then lays out.
    void Resize(Twips ContainerHeight, Twips ContainerWidth);
    void SwapPanels();

    bool LeftPanelVisible() const { return m_geometry.isFirstVisible; }
    void SetLeftPanelVisible(bool isVisible);
    bool RightPanelVisible() const { return m_geometry.isSecondVisible; }
    void SetRightPanelVisible(bool isVisible);
    bool Visible() const { return m_isVisible; }
    void SetVisible(bool isVisible);

    // The bar's left or top edge as last set by a drag or by the owner; it is not changed by a
    // container that is too small for it. Setting it takes effect at the next layout.
    Twips SplitPosition() const { return m_splitPosition; }
    void SetSplitPosition(Twips position) { m_splitPosition = position; }

    // From now on the second pane keeps its size when the container's changes, instead of the
    // first: the position moves with the container's far edge.
    void KeepSecondPaneSize(bool isKept) { m_keepsSecondSize = isKept; }

    // The container's resolution; takes effect at the next layout.
    void SetDpi(int dpi) { m_dpi = dpi; }

private:
    std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnBarDown(POINT at) override;
    void OnBarMove(POINT at) override;
    void OnBarUp() override {}
    void OnBarCancel(bool goesBack) override;
    void OnContainerSize(Pixels width, Pixels height);
    void UpdateVisibility();
    SplitterGeometry Geometry() const;
    void Layout();
    HDWP Place(HDWP batch, HWND window, const std::optional<TwipsRect>& at, UINT flags) const;
    bool IsVertical() const { return m_geometry.direction == SplitDirection::Vertical; }

    int m_dpi = kDesignDpi;
    bool m_isVisible = true;
    bool m_keepsSecondSize = false;
    HWND mobjContainerControl = nullptr;
    SplitterBar* mobjSplitterControl = nullptr;
    HWND m_pane1 = nullptr;
    HWND m_pane2 = nullptr;
    SplitterGeometry m_geometry;
    Twips m_splitPosition;
    Twips m_positionBeforeDrag;
    POINT m_dragStart{};
};

}  // namespace tamarind
