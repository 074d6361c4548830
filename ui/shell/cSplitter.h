#pragma once

#include "ui/shell/SplitterBar.h"
#include "ui/shell/SplitterLayout.h"

namespace tamarind {

// The first state of a splitter. Margins are kept free around the panes.
struct SplitterOptions {
    SplitDirection Direction = SplitDirection::Vertical;
    Twips SplitterStartPos;
    Twips SplitterSize;
    Twips LeftMargin;
    Twips TopMargin;
    Twips RightMargin;
    Twips BottomMargin;
};

// Lays out two panes in a container, with a bar between them that the user can drag. It follows the
// size of the container by itself. SplitterLayout does the arithmetic, in twips.
class cSplitter final : private MessageFilter, private SplitterBarListener {
public:
    cSplitter() = default;
    ~cSplitter() { WindowObject::SetFilter(mobjContainerControl, nullptr); }
    cSplitter(const cSplitter&) = delete;
    cSplitter& operator=(const cSplitter&) = delete;

    // The smallest sizes of the panes.
    Twips MinLeftPanelWidth{1200};
    Twips MinRightPanelWidth{1200};

    // Makes the windows children of the container and lays them out. They are not owned, and must
    // exist as long as the splitter lays out.
    void CreateSplitter(HWND Container, SplitterBar& Splitter, HWND Pane1, HWND Pane2,
                        const SplitterOptions& options, int dpi);

    // Sets the size of the container and lays out.
    void Resize(Twips ContainerHeight, Twips ContainerWidth);
    void SwapPanels();

    bool LeftPanelVisible() const { return m_geometry.isFirstVisible; }
    // Hiding one pane gives its room to the other and hides the bar; with both hidden, the
    // container is hidden, too. The left pane is the upper one above a horizontal bar.
    void SetLeftPanelVisible(bool isVisible);
    bool RightPanelVisible() const { return m_geometry.isSecondVisible; }
    void SetRightPanelVisible(bool isVisible);
    bool Visible() const { return m_isVisible; }
    // Shows or hides the container with everything in it.
    void SetVisible(bool isVisible);

    // The left or upper edge of the bar, as a drag or the owner has set it. A container that is too
    // small for it shows the bar elsewhere but does not change this. A new position takes effect at
    // the next layout.
    Twips SplitPosition() const { return m_splitPosition; }
    void SetSplitPosition(Twips position) { m_splitPosition = position; }

    // With `isKept` the second pane keeps its size when the container changes its own, instead of
    // the first one: the position then moves with the far edge of the container.
    void KeepSecondPaneSize(bool isKept) { m_keepsSecondSize = isKept; }

    // The DPI of the container; takes effect at the next layout.
    void SetDpi(int dpi) { m_dpi = dpi; }

private:
    std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnBarDown(POINT at) override;
    void OnBarMove(POINT at) override;
    void OnBarUp() override {}
    void OnBarCancel(bool goesBack) override;
    void OnContainerSize(Pixels width, Pixels height);
    void UpdateVisibility();
    // The state with the smallest sizes of the panes as they are now.
    SplitterGeometry Geometry() const;
    void Layout();
    // Adds the move of a window to the batch.
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
