#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"

namespace tamarind {
namespace {

class EditingWindowTest : public MainWindowTest {
protected:
    HWND Box() const { return Find(kIdTxtInplaceEdit); }
    HWND Sample() const { return Find(kIdCmdColorSample); }
    void Enter(const char* text) const {
        SetWindowTextW(Box(), Widen(text).c_str());
        SendMessageW(Box(), WM_CHAR, VK_RETURN, 1);
    }
    // Handles what is posted, timers too, until `condition` holds.
    static bool PumpUntil(const std::function<bool()>& condition) {
        const ULONGLONG end = GetTickCount64() + 5000;
        while (!condition() && GetTickCount64() < end) {
            MSG message{};
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                DispatchMessageW(&message);
            }
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return condition();
    }
    void SetDpi(int dpi) const {
        const RECT bounds{20, 20, 1020, 720};
        SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&bounds));
    }
    // A row's place, as the screen has it.
    RECT RowBounds(int row) const {
        RECT bounds{LVIR_BOUNDS, 0, 0, 0};
        Send(kIdListView1, LVM_GETITEMRECT, static_cast<WPARAM>(row),
             reinterpret_cast<LPARAM>(&bounds));
        return bounds;
    }
    LONG TextWidth(const std::wstring& text) const {
        const ScreenDC dc;
        const SelectedObject font(dc.Get(),
                                  reinterpret_cast<HFONT>(Send(kIdListView1, WM_GETFONT)));
        SIZE size{};
        GetTextExtentPoint32W(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    }
};

TEST_F(EditingWindowTest, TheBoxLiesOverItsRow) {
    struct Case {
        int dpi;
        int splitPosition;  // of the list's left edge, in twips
        LONG iconWidth, rowMargin, textMargin, listMargin, leastCap;
    };
    const Case cases[] = {
        {96, 4000, 19, 2, 20, 46, 18},
        {96, 12000, 19, 2, 20, 46, 18},  // too narrow for the text
        {144, 4000, 29, 3, 30, 69, 27},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.dpi << " " << c.splitPosition);
        PutOwnSettings("FontSize=10\r\nSplitPosition=" + std::to_string(c.splitPosition) + "\r\n");
        Start();
        SetDpi(c.dpi);
        Press(kIdListView1, VK_DOWN);
        Command(tamarind::Command::EditValue);
        ASSERT_TRUE(IsWindowVisible(Box()));
        EXPECT_EQ(TextOf(Box()), "ShowHidden=0");
        const RECT list = BoundsOf(Find(kIdListView1));
        const RECT row = RowBounds(1);
        const RECT box = BoundsOf(Box());
        const LONG cap = std::max(list.right - list.left - c.listMargin, c.leastCap);
        EXPECT_EQ(box.top, list.top + row.top + c.rowMargin);
        EXPECT_EQ(box.bottom - box.top, row.bottom - row.top - c.rowMargin);
        EXPECT_EQ(box.left, list.left + row.left + c.iconWidth);
        EXPECT_EQ(box.right - box.left, std::min(TextWidth(L"ShowHidden=0") + c.textMargin, cap));

        // It follows the list's width but not the rows' scrolling or another font.
        SetSize(800, 500);
        EXPECT_TRUE(IsWindowVisible(Box()));
        EXPECT_EQ(BoundsOf(Box()).left - BoundsOf(Find(kIdListView1)).left, box.left - list.left);
    }
}

TEST_F(EditingWindowTest, ScrollingClosesTheBoxAndStoresNothing) {
    std::string keys = "[Panels]\r\nCategoryTargetSection=Configuration\r\n";
    for (int key = 0; key < 100; ++key) {
        keys += "K" + std::to_string(key) + "=1///\r\n";
    }
    world.disk.Put(SessionWorld::kWincmdData, keys);
    world.disk.Wait(10);
    Start();
    Command(tamarind::Command::EditValue);
    DWORD start = 0;
    SendMessageW(Box(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    EXPECT_EQ(start, 3U);
    SetWindowTextW(Box(), L"K0=5");
    Send(kIdListView1, LVM_SCROLL, 0, 100);
    EXPECT_TRUE(PumpUntil([&] { return !IsWindowVisible(Box()); }));
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(Row(0), "K0");

    // Undoing brings the key's row back into sight and makes it the selected one.
    Press(kIdListView1, VK_HOME);
    Command(tamarind::Command::EditSetValue0);
    EXPECT_EQ(Row(0), "K0=0");
    Press(kIdListView1, VK_END);
    Command(tamarind::Command::EditUndo);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(Send(kIdListView1, LVM_GETTOPINDEX), 0);
    EXPECT_EQ(Row(0), "K0");
}

TEST_F(EditingWindowTest, ColourKeysHaveASample) {
    Start();
    EXPECT_FALSE(IsWindowVisible(Sample()));
    Press(kIdListView1, VK_END);
    EXPECT_TRUE(IsWindowVisible(Sample()));
    EXPECT_EQ(TextOf(Sample()), "");  // the system's colour
    Command(tamarind::Command::EditValue);
    Enter("BackColor=16711935");
    EXPECT_EQ(TextOf(Sample()), "#FF00FF");
    const HWND list = Find(kIdListView1);
    const RECT at = BoundsOf(Sample());
    EXPECT_EQ(BoundsOf(list).right - at.right, 6);
    EXPECT_GE(at.top, BoundsOf(reinterpret_cast<HWND>(Send(kIdListView1, LVM_GETHEADER))).bottom);
    EXPECT_EQ(WindowFromPoint({at.left + 5, at.top + 5}), list);  // clicks go through it
    const ScreenDC dc(Sample());
    UpdateWindow(Sample());
    EXPECT_EQ(GetPixel(dc.Get(), 12, 12), RGB(255, 0, 255));

    world.prompts.colorsToChoose = {"255"};
    Command(tamarind::Command::EditBrowseValue);
    EXPECT_EQ(TextOf(Sample()), "#FF0000");
    Command(tamarind::Command::EditUndo);
    EXPECT_EQ(TextOf(Sample()), "#FF00FF");
    Press(kIdListView1, VK_HOME);
    EXPECT_FALSE(IsWindowVisible(Sample()));
}

TEST_F(EditingWindowTest, NothingIsDoneWhileASaveWaits) {
    Start();
    Command(tamarind::Command::EditSetValue0);
    world.programs.isRunning = true;
    int waits = 0;
    world.programs.onWait = [&] {
        ++waits;
        SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
        EXPECT_EQ(SendMessageW(window->Handle(), WM_QUERYENDSESSION, 0, 0), FALSE);
        Command(tamarind::Command::EditSetValue1);
        Command(tamarind::Command::FileSaveAndRestart);
        Press(kIdListView1, VK_DELETE);
        Press(kIdListView1, VK_RETURN);
        EXPECT_FALSE(IsWindowVisible(Box()));
    };
    Command(tamarind::Command::FileSaveAndRestart);
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(Row(0), "PanelsVertical=0");
    EXPECT_TRUE(world.prompts.messages.empty());
    ASSERT_NE(window->Handle(), nullptr);

    // Afterwards it closes, unless the user cancels that.
    Command(tamarind::Command::EditSetValue1);
    EXPECT_EQ(SendMessageW(window->Handle(), WM_QUERYENDSESSION, 0, 0), FALSE);
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_NE(window->Handle(), nullptr);
    world.prompts.answers = {Answer::No};
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(window->Handle(), nullptr);
}

}  // namespace
}  // namespace tamarind
