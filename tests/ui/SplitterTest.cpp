#include <gtest/gtest.h>

#include "ui/shell/cSplitter.h"
#include "ui/toolkit/Pane.h"

namespace tamarind {

namespace {

constexpr TwipsRect Rect(int left, int top, int right, int bottom) {
    return {{left}, {top}, {right}, {bottom}};
}

SplitterGeometry Geometry(SplitDirection direction, int width, int height) {
    SplitterGeometry geometry;
    geometry.direction = direction;
    geometry.containerWidth = {width};
    geometry.containerHeight = {height};
    geometry.splitterSize = {45};
    geometry.minFirst = {1200};
    geometry.minSecond = {2100};
    return geometry;
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
        {"side by side", kVertical, 9000, 5000, 4000, 0, Rect(0, 0, 4000, 5000),
         Rect(4000, 0, 4045, 5000), Rect(4045, 0, 9000, 5000)},
        {"above each other", kHorizontal, 9000, 5000, 2000, 0, Rect(0, 0, 9000, 2000),
         Rect(0, 2000, 9000, 2045), Rect(0, 2045, 9000, 5000)},
        {"margins", kVertical, 9000, 5000, 4000, 100, Rect(100, 100, 4000, 4900),
         Rect(4000, 100, 4045, 4900), Rect(4045, 100, 8900, 4900)},
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
        SplitterGeometry geometry = Geometry(c.direction, c.width, c.height);
        geometry.leftMargin = geometry.topMargin = {c.margin};
        geometry.rightMargin = geometry.bottomMargin = {c.margin};
        const SplitterPlaces places = LayOutSplitter(geometry, {c.position});
        EXPECT_TRUE(places.first == c.first);
        EXPECT_TRUE(places.bar == c.bar);
        EXPECT_TRUE(places.second == c.second);
    }
}

// A container of 600 x 400 pixels with a bar between two panes.
class SplitterWindowTest : public testing::Test {
protected:
    void SetUp() override {
        frame.Create(nullptr);
        ASSERT_TRUE(container.Create(frame.Handle(), 1));
        container.SetBounds({0, 0, 600, 400});
        ASSERT_TRUE(first.Create(container.Handle(), 2) && second.Create(container.Handle(), 3) &&
                    bar.Create(container.Handle(), 4));
    }

    void Make(SplitDirection direction, int position) {
        SplitterOptions options;
        options.Direction = direction;
        options.SplitterStartPos = {position};
        options.SplitterSize = {45};
        splitter.CreateSplitter(container.Handle(), bar, first.Handle(), second.Handle(), options,
                                kDesignDpi);
    }

    void Send(UINT message, int x, int y) {
        SendMessageW(bar.Handle(), message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON,
                     MAKELPARAM(x, y));
    }
    void Drag(int x, int y) {
        Send(WM_LBUTTONDOWN, 1, 1);
        Send(WM_MOUSEMOVE, 1 + x, 1 + y);
        Send(WM_LBUTTONUP, 1 + x, 1 + y);
    }
    RECT BoundsOf(const Window& window) const {
        RECT bounds{};
        GetWindowRect(window.Handle(), &bounds);
        MapWindowPoints(nullptr, container.Handle(), reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    }

    class Frame final : public Window {
    public:
        void Create(HWND owner) {
            WindowParams params;
            params.className = L"SplitterTestFrame";
            params.style = WS_POPUP;
            params.parent = owner;
            params.bounds = {0, 0, 600, 400};
            ASSERT_TRUE(CreateHandle(params));
        }
    };

    Frame frame;
    Pane container;
    Pane first;
    Pane second;
    SplitterBar bar;
    cSplitter splitter;
};

TEST_F(SplitterWindowTest, DragsWithinStrictLimits) {
    Make(SplitDirection::Vertical, 3000);  // 200 pixels
    const struct {
        int moved, position;
    } steps[] = {
        {100, 4500}, {-150, 2250}, {-70, 2250},  // 1200 twips are not more than 1200
        {-69, 1215}, {439, 1215},                // 7800 are not less than 9000 - 1200
        {438, 7785}, {500, 7785},
    };
    for (const auto& step : steps) {
        Drag(step.moved, 30);
        EXPECT_EQ(splitter.SplitPosition().value, step.position) << step.moved;
        EXPECT_EQ(BoundsOf(bar).left, step.position / 15);
    }
}

TEST_F(SplitterWindowTest, MovesOnlyWhileTheLeftButtonAloneIsHeld) {
    Make(SplitDirection::Horizontal, 3000);
    Send(WM_MOUSEMOVE, 5, 50);
    EXPECT_EQ(BoundsOf(bar).top, 200);
    Send(WM_LBUTTONDOWN, 0, 0);
    SendMessageW(bar.Handle(), WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, MAKELPARAM(0, 20));
    EXPECT_EQ(BoundsOf(bar).top, 200);
    Send(WM_MOUSEMOVE, 0, 20);
    EXPECT_EQ(BoundsOf(bar).top, 220);
    EXPECT_EQ(BoundsOf(first).bottom, 220);
    EXPECT_EQ(BoundsOf(second).top, 223);
    SetCapture(frame.Handle());  // as when another window comes up
    Send(WM_MOUSEMOVE, 0, 30);
    EXPECT_EQ(splitter.SplitPosition().value, 3300);
    ReleaseCapture();
}

TEST_F(SplitterWindowTest, EscapeTakesTheDragBack) {
    Make(SplitDirection::Vertical, 3000);
    ShowWindow(frame.Handle(), SW_SHOW);
    SetFocus(first.Handle());
    Send(WM_LBUTTONDOWN, 0, 0);
    Send(WM_MOUSEMOVE, 60, 0);
    ASSERT_EQ(BoundsOf(bar).left, 260);
    SendMessageW(first.Handle(), WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_EQ(BoundsOf(bar).left, 200);
    EXPECT_NE(GetCapture(), bar.Handle());
    Send(WM_MOUSEMOVE, 60, 0);
    EXPECT_EQ(splitter.SplitPosition().value, 3000);
}

TEST_F(SplitterWindowTest, SettingThePositionWaitsForTheNextLayout) {
    Make(SplitDirection::Vertical, 3000);
    splitter.SetSplitPosition({4500});
    EXPECT_EQ(BoundsOf(bar).left, 200);
    splitter.Resize({6000}, {9000});
    EXPECT_EQ(BoundsOf(bar).left, 300);
}

TEST_F(SplitterWindowTest, SwapsAndHidesPanes) {
    Make(SplitDirection::Vertical, 3000);
    splitter.SwapPanels();
    EXPECT_EQ(BoundsOf(second).right, 200);
    splitter.SwapPanels();
    EXPECT_EQ(BoundsOf(first).right, 200);

    const auto isShown = [](const Window& window) {
        return (GetWindowLongPtrW(window.Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
    };
    splitter.SetRightPanelVisible(false);
    EXPECT_EQ(BoundsOf(first).right, 600);
    EXPECT_FALSE(isShown(bar) || isShown(second));
    splitter.SetLeftPanelVisible(false);
    EXPECT_FALSE(isShown(container));
    splitter.SetRightPanelVisible(true);
    EXPECT_TRUE(isShown(container));
    EXPECT_EQ(BoundsOf(second).left, 0);
    splitter.SetLeftPanelVisible(true);
    EXPECT_TRUE(isShown(bar));
    EXPECT_EQ(BoundsOf(first).right, 200);
}

TEST_F(SplitterWindowTest, KeepsTheSecondPanesSizeAndRemembersItThroughATightContainer) {
    Make(SplitDirection::Horizontal, 3000);
    splitter.KeepSecondPaneSize(true);
    container.SetBounds({0, 0, 600, 500});
    EXPECT_EQ(splitter.SplitPosition().value, 4500);
    EXPECT_EQ(BoundsOf(bar).top, 300);
    container.SetBounds({0, 0, 600, 180});
    EXPECT_EQ(BoundsOf(bar).top, 80);
    container.SetBounds({0, 0, 600, 400});
    EXPECT_EQ(BoundsOf(bar).top, 200);
    EXPECT_EQ(splitter.SplitPosition().value, 3000);
}

}  // namespace
}  // namespace tamarind
