#include "model/program/StringTable.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/MarkedText.h"

namespace tamarind {
namespace {

class FilterBarTest : public MainWindowTest {
protected:
    HWND Box() const { return Find(kIdTxtFilter); }
    TextFilter& Filter() const { return world.session->Filter(); }
    bool IsShown(int id) const { return Find(id) != nullptr && IsWindowVisible(Find(id)); }
    void Type(const wchar_t* text) const {
        for (; *text != 0; ++text) {
            SendMessageW(Box(), WM_CHAR, static_cast<WPARAM>(*text), 0);
        }
    }
    std::string Counter() const { return Told(kIdStatusBar1, SB_GETTEXTW, 2); }
    // How many of its pixels a control draws in a color.
    static int PixelsOf(HWND control, COLORREF color) {
        UpdateWindow(control);
        const ScreenDC dc(control);
        const SIZE size = ClientSizeOf(control);
        int count = 0;
        for (int y = 0; y < size.cy; ++y) {
            for (int x = 0; x < std::min<int>(size.cx, 200); ++x) {
                count += GetPixel(dc.Get(), x, y) == color ? 1 : 0;
            }
        }
        return count;
    }
    // Chooses the entry of a menu that `open` opens; 0 is the first one.
    void ChooseEntry(int entry, const std::function<void()>& open) {
        bool isOpen = false;
        Timer timer([&] {
            if (!std::exchange(isOpen, true)) {
                for (int step = 0; step <= entry; ++step) {
                    PostMessageW(Main(), WM_KEYDOWN, VK_DOWN, 0);
                }
                PostMessageW(Main(), WM_KEYDOWN, VK_RETURN, 0);
            }
        });
        timer.Start(Main(), 50);
        open();
        EXPECT_TRUE(isOpen);
    }
};

TEST_F(FilterBarTest, KeysLeadFromTheBoxIntoTheHitsAndBack) {
    Start();
    const Strings all = Rows();
    world.session->Selection().SelectCategory(1);
    Do(Command::SearchFilter);
    ASSERT_EQ(GetFocus(), Box());
    EXPECT_FALSE(IsShown(kIdCmdClearFilter));
    Type(L"back col");
    EXPECT_EQ(Rows(), (Strings{"BackColor"}));
    EXPECT_EQ(Counter(), "1 of " + std::to_string(all.size()) + " keys");
    EXPECT_TRUE(IsShown(kIdCmdClearFilter));
    Press(kIdTxtFilter, VK_DOWN);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    Press(kIdListView1, VK_ESCAPE);
    EXPECT_EQ(TextOf(Box()), "");
    EXPECT_EQ(Rows(), (Strings{"BackColor"})) << "its own category";
    EXPECT_FALSE(IsShown(kIdCmdClearFilter));

    // A search takes the text away; the box of an empty filter shows the last one.
    Do(Command::SearchFilter);
    Type(L"hidden");
    world.session->Selection().GoToKey(1);
    EXPECT_EQ(TextOf(Box()), "");
    EXPECT_EQ(Rows(), all);
    ChooseEntry(0, [this] { Press(kIdTxtFilter, VK_F4); });
    EXPECT_EQ(TextOf(Box()), "back col");
    ChooseEntry(4, [this] { Send(kIdCmdFilterWords, BM_CLICK); });
    EXPECT_EQ(TextOf(Box()), "back col name:");
    EXPECT_EQ(GetFocus(), Box());
    Press(kIdTxtFilter, VK_ESCAPE);
    EXPECT_FALSE(Filter().IsOn());
}

TEST_F(FilterBarTest, HitsAreMarked) {
    constexpr COLORREF kMark = RGB(255, 242, 179);
    for (const COLORREF color : {RGB(0, 0, 255), GetSysColor(COLOR_GRAYTEXT), RGB(255, 255, 255)}) {
        EXPECT_GE(ContrastOf(kMark, ReadableOn(kMark, color)), 4.5);
    }
    Start();
    world.session->Selection().GoToKey(3);
    for (const int id : {kIdListView1, kIdTxtDescriptionBox}) {
        EXPECT_EQ(PixelsOf(Find(id), kMark), 0) << id;
    }
    Filter().SetText("side");
    for (const int id : {kIdListView1, kIdTxtDescriptionBox}) {
        const bool isInIt = id == kIdTxtDescriptionBox;
        EXPECT_EQ(PixelsOf(Find(id), kMark) > 0, isInIt) << id;
    }
    Filter().SetText("panels");
    EXPECT_GT(PixelsOf(Find(kIdListView1), kMark), 20);
    // What is selected in the description looks selected.
    Filter().SetText("side");
    Send(kIdTxtDescriptionBox, EM_SETSEL, 0, -1);
    EXPECT_EQ(PixelsOf(Find(kIdTxtDescriptionBox), kMark), 0);
    Filter().Clear();
    EXPECT_EQ(PixelsOf(Find(kIdListView1), kMark), 0);
}

TEST_F(FilterBarTest, AnEmptyListSaysWhy) {
    world.disk.Put(SessionWorld::kWcxFtpData,
                   "[TargetIniFile]\r\nWcx_ftp=1\r\n[Ftp]\r\nCategoryTargetSection=General\r\n"
                   "Passive=1///\r\n");
    Start();
    Do(Command::ViewActiveKeys);
    EXPECT_TRUE(TextOf(Find(kIdCmdShowAllKeys)).starts_with("Active Keys"));
    Filter().SetText("hidden");
    EXPECT_EQ(TextOf(Find(kIdLblNoHits)), "1 hidden by View > Active Keys");
    EXPECT_TRUE(Counter().ends_with("keys, 1 hidden by View > Active Keys")) << Counter();
    Send(kIdCmdShowAllKeys, BM_CLICK);
    EXPECT_EQ(Rows(), (Strings{"ShowHidden=0"}));
    EXPECT_FALSE(IsShown(kIdLblNoHits));
    EXPECT_FALSE(IsShown(kIdCmdShowAllKeys));

    Filter().SetText("passive");
    for (const int dpi : {96, 144}) {
        SetDpi(dpi, {0, 0, 600 * dpi / 96, 500 * dpi / 96});
        EXPECT_EQ(TextOf(Find(kIdLblNoHits)), "No key contains 'passive'");
        ASSERT_TRUE(IsShown(kIdCmdOtherHits));
        EXPECT_TRUE(IsInside(BoundsOf(Find(kIdCmdOtherHits)), BoundsOf(Find(kIdListView1))));
        EXPECT_GT(BoundsOf(Find(kIdListView1)).top, BoundsOf(Box()).bottom);
    }
    EXPECT_EQ(TextOf(Find(kIdCmdOtherHits)), "1 in Wcx_ftp");
    Send(kIdCmdOtherHits, BM_CLICK);
    EXPECT_EQ(Rows(), (Strings{"Passive"}));
    EXPECT_FALSE(IsShown(kIdCmdOtherHits));
}

TEST_F(FilterBarTest, TheBarCanBeSwitchedOff) {
    Start();
    Filter().SetText("hidden");
    SetFocus(Box());
    Do(Command::ViewFilterBar);
    EXPECT_FALSE(IsWindowVisible(Find(kIdFilterBar)));
    EXPECT_FALSE(Filter().IsOn());
    EXPECT_NE(GetFocus(), Box());
    const RECT list = BoundsOf(Find(kIdListView1));
    EXPECT_EQ(list.top, BoundsOf(Find(kIdTreeView1)).top);
    Do(Command::SearchFilter);
    EXPECT_EQ(GetFocus(), Box());
    EXPECT_LT(list.top, BoundsOf(Find(kIdListView1)).top);
    Do(Command::ViewFilterBar);
    SendMessageW(Main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(OwnSettings({"FilterBarVisible"}), (Strings{"0"}));
    Start();
    EXPECT_EQ(Box(), nullptr);
}

}  // namespace
}  // namespace tamarind
