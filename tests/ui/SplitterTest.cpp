#include <gtest/gtest.h>

#include "tests/ui/WindowDriver.h"
#include "ui/shell/cSplitter.h"
#include "ui/toolkit/Pane.h"

namespace tamarind {
namespace {

constexpr TwipsRect Rect(int left, int top, int right, int bottom) {
    return {{left}, {top}, {right}, {bottom}};
}

TEST(SplitterLayout, PlacesBarAndPanes) {
    struct Case {
        const char* what;
        SplitDirection direction;
        int width, height, position, margin;
        TwipsRect first, bar, second;
    };
    constexpr auto kVertical = SplitDirection::Vertical;
    constexpr auto kHorizontal = SplitDirection::Horizontal;
    const Case cases[] = {
        {"above each other, with margins", kHorizontal, 9000, 5000, 2000, 100,
         Rect(100, 100, 8900, 2000), Rect(100, 2000, 8900, 2045), Rect(100, 2045, 8900, 4900)},
        {"second pane keeps its smallest size", kVertical, 5000, 5000, 4000, 0,
         Rect(0, 0, 2900, 5000), Rect(2900, 0, 2945, 5000), Rect(2945, 0, 5000, 5000)},
        {"so does the first, before the second", kVertical, 3000, 900, -50, 0,
         Rect(0, 0, 1200, 900), Rect(1200, 0, 1245, 900), Rect(1245, 0, 3000, 900)},
        {"no room for either", kHorizontal, 900, 1000, 4000, 0, Rect(0, 0, 900, 955),
         Rect(0, 955, 900, 1000), Rect(0, 1000, 900, 1000)},
        {"no room at all", kVertical, 0, 0, 4000, 0, Rect(0, 0, 0, 0), Rect(0, 0, 45, 0),
         Rect(45, 0, 45, 0)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SplitterGeometry geometry;
        geometry.direction = c.direction;
        geometry.containerWidth = {c.width};
        geometry.containerHeight = {c.height};
        geometry.splitterSize = {45};
        geometry.minFirst = {1200};
        geometry.minSecond = {2100};
        geometry.leftMargin = geometry.topMargin = {c.margin};
        geometry.rightMargin = geometry.bottomMargin = {c.margin};
        const SplitterPlaces places = LayOutSplitter(geometry, {c.position});
        EXPECT_TRUE(places.first == c.first);
        EXPECT_TRUE(places.bar == c.bar);
        EXPECT_TRUE(places.second == c.second);
        // A drag stops before it makes a pane smaller than that.
        EXPECT_FALSE(AcceptsDrag(geometry, geometry.minFirst));
    }
}

TEST(Splitter, SwapsHidesAndMovesPanes) {
    Pane container;
    Pane first;
    Pane second;
    SplitterBar bar;
    ASSERT_TRUE(container.Create(GetDesktopWindow(), 1) && first.Create(container.Handle(), 2) &&
                second.Create(container.Handle(), 3) && bar.Create(container.Handle(), 4));
    container.SetBounds({0, 0, 600, 400});
    const auto boundsOf = [&](const Window& window) {
        RECT bounds = BoundsOf(window.Handle());
        MapWindowPoints(nullptr, container.Handle(), reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    };
    const auto isShown = [](const Window& window) {
        return (GetWindowLongPtrW(window.Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
    };
    cSplitter splitter;
    SplitterOptions options;
    options.SplitterStartPos = {3000};  // 200 pixels
    options.SplitterSize = {45};
    splitter.CreateSplitter(container.Handle(), bar, first.Handle(), second.Handle(), options,
                            kDesignDpi);
    splitter.SetSplitPosition({4500});
    EXPECT_EQ(boundsOf(bar).left, 200) << "it waits for the next layout";
    splitter.Resize({6000}, {9000});
    EXPECT_EQ(boundsOf(bar).left, 300);
    splitter.SwapPanels();
    EXPECT_EQ(boundsOf(second).right, 300);
    splitter.SwapPanels();

    splitter.SetRightPanelVisible(false);
    EXPECT_EQ(boundsOf(first).right, 600);
    EXPECT_FALSE(isShown(bar) || isShown(second));
    splitter.SetLeftPanelVisible(false);
    EXPECT_FALSE(isShown(container));
    splitter.SetRightPanelVisible(true);
    EXPECT_TRUE(isShown(container));
    EXPECT_EQ(boundsOf(second).left, 0);
    splitter.SetLeftPanelVisible(true);
    EXPECT_TRUE(isShown(bar));
    EXPECT_EQ(boundsOf(first).right, 300);
}

}  // namespace
}  // namespace tamarind
