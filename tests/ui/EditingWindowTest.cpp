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
};

TEST_F(EditingWindowTest, TheBoxLiesOverItsRow) {
    const struct {
        int dpi;
        const char* splitPosition;  // of the list's left edge, in twips
        bool hasRoom;               // for the text
        LONG iconWidth, rowMargin;
    } cases[] = {
        {96, "4000", true, 19, 2}, {96, "12000", false, 19, 2}, {144, "4000", true, 29, 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.dpi << " " << c.splitPosition);
        PutOwnSettings(std::string("FontSize=24\r\nSplitPosition=") + c.splitPosition + "\r\n");
        Start();
        SetDpi(c.dpi, {20, 20, 1020, 720});
        Press(kIdListView1, VK_DOWN);
        Command(tamarind::Command::EditValue);
        ASSERT_TRUE(IsWindowVisible(Box()));
        EXPECT_EQ(TextOf(Box()), "ShowHidden=0");
        const RECT list = BoundsOf(Find(kIdListView1));
        RECT row{};
        ListView_GetItemRect(Find(kIdListView1), 1, &row, LVIR_BOUNDS);
        const RECT box = BoundsOf(Box());
        EXPECT_EQ(box.top, list.top + row.top + c.rowMargin);
        EXPECT_EQ(box.bottom - box.top, row.bottom - row.top - c.rowMargin);
        EXPECT_EQ(box.left, list.left + row.left + c.iconWidth);
        EXPECT_LE(box.right, list.right);
        // Where the first letter stands, once the last one is in sight.
        const auto first = static_cast<short>(SendMessageW(Box(), EM_POSFROMCHAR, 0, 0));
        EXPECT_EQ(first >= 0, c.hasRoom);

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
    SetWindowTextW(Box(), L"K0=5");
    Send(kIdListView1, LVM_SCROLL, 0, 100);
    EXPECT_TRUE(PumpUntil([&] { return !IsWindowVisible(Box()); }));
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(Rows()[0], "K0");

    // Undoing brings the key's row back into sight and makes it the selected one.
    Press(kIdListView1, VK_HOME);
    Command(tamarind::Command::EditSetValue0);
    EXPECT_EQ(Rows()[0], "K0=0");
    Press(kIdListView1, VK_END);
    Command(tamarind::Command::EditUndo);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(Send(kIdListView1, LVM_GETTOPINDEX), 0);
    EXPECT_EQ(Rows()[0], "K0");
}

TEST_F(EditingWindowTest, AButtonFirstClosesTheBox) {
    Start();
    const auto click = [&](tamarind::Command command) {
        SendMessageW(window->Handle(), WM_COMMAND, static_cast<WPARAM>(command),
                     reinterpret_cast<LPARAM>(Find(kIdToolbar1)));
    };
    Command(tamarind::Command::EditValue);
    SetWindowTextW(Box(), L"PanelsVertical=typed");
    Command(tamarind::Command::EditDelete);  // of the menu
    EXPECT_TRUE(IsWindowVisible(Box()));
    click(tamarind::Command::EditValue);
    EXPECT_TRUE(IsWindowVisible(Box()));
    EXPECT_EQ(TextOf(Box()), "PanelsVertical=1");
    click(tamarind::Command::EditDelete);
    EXPECT_FALSE(IsWindowVisible(Box()));
    EXPECT_EQ(Rows()[0], "PanelsVertical");
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
    EXPECT_EQ(WindowFromPoint({at.left + 5, at.top + 5}), list);  // clicks go through it
    const ScreenDC dc(Sample());
    UpdateWindow(Sample());
    EXPECT_EQ(GetPixel(dc.Get(), 12, 12), RGB(255, 0, 255));

    world.prompts.colorsToChoose = {"255"};
    Command(tamarind::Command::EditBrowseValue);
    EXPECT_EQ(TextOf(Sample()), "#FF0000");
    Command(tamarind::Command::EditUndo);
    EXPECT_EQ(TextOf(Sample()), "#FF00FF");
    EXPECT_EQ(world.prompts.startColors, std::vector<std::int32_t>{0xFF00FF});
    Command(tamarind::Command::EditDelete);
    EXPECT_EQ(TextOf(Sample()), "");
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
    EXPECT_EQ(Rows()[0], "PanelsVertical=0");
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
