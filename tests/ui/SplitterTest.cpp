#include <gtest/gtest.h>

#include "tests/ui/WindowDriver.h"
#include "ui/shell/cSplitter.h"
#include "ui/toolkit/Pane.h"

namespace tamarind {
namespace {

TEST(SplitterLayout, PlacesBarAndPanes) {
    const struct {
        const char* what;
        int length, across, position, margin;
        int first, bar, second, end;  // where each begins on the line on which the bar moves
    } cases[] = {
        {"as wanted, with margins", 9000, 5000, 2000, 100, 100, 2000, 2045, 8900},
        {"the second pane keeps its smallest size", 5000, 900, 4000, 0, 0, 2900, 2945, 5000},
        {"so does the first, before the second", 3000, 900, -50, 0, 0, 1200, 1245, 3000},
        {"no room for either", 1000, 900, 4000, 0, 0, 955, 1000, 1000},
        {"no room at all", 0, 0, 4000, 0, 0, 0, 45, 45},
    };
    for (const bool isVertical : {true, false}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << c.what << ", vertical: " << isVertical);
            SplitterGeometry geometry;
            geometry.direction = isVertical ? SplitDirection::Vertical : SplitDirection::Horizontal;
            geometry.containerWidth = {isVertical ? c.length : c.across};
            geometry.containerHeight = {isVertical ? c.across : c.length};
            geometry.splitterSize = {45};
            geometry.minFirst = {1200};
            geometry.minSecond = {2100};
            geometry.leftMargin = geometry.topMargin = {c.margin};
            geometry.rightMargin = geometry.bottomMargin = {c.margin};
            const auto between = [&](Twips from, Twips to) {
                const Twips acrossEnd{c.across - c.margin};
                return isVertical ? TwipsRect{from, {c.margin}, to, acrossEnd}
                                  : TwipsRect{{c.margin}, from, acrossEnd, to};
            };
            const SplitterPlaces places = LayOutSplitter(geometry, {c.position});
            EXPECT_TRUE(places.first == between({c.first}, {c.bar}));
            EXPECT_TRUE(places.bar == between({c.bar}, {c.second}));
            EXPECT_TRUE(places.second == between({c.second}, {c.end}));
            // A drag stops before it makes a pane smaller than that.
            EXPECT_FALSE(AcceptsDrag(geometry, geometry.minFirst));
        }
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
    const auto rightOf = [](const Window& pane) { return BoundsInParent(pane.Handle()).right; };
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
    EXPECT_EQ(rightOf(first), 200) << "it waits for the next layout";
    splitter.Resize({6000}, {9000});
    EXPECT_EQ(rightOf(first), 300);
    splitter.SwapPanels();
    EXPECT_EQ(rightOf(second), 300);
    splitter.SetRightPanelVisible(false);
    EXPECT_EQ(rightOf(second), 600);
    splitter.SetLeftPanelVisible(false);
    EXPECT_FALSE(isShown(container) || isShown(bar) || isShown(first));
    splitter.SetRightPanelVisible(true);
    EXPECT_TRUE(isShown(container));
    EXPECT_EQ(BoundsInParent(first.Handle()).left, 0);
    splitter.SetLeftPanelVisible(true);
    EXPECT_EQ(rightOf(second), 300);
    EXPECT_TRUE(isShown(bar) && isShown(first));
}

}  // namespace
}  // namespace tamarind
