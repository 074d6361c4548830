#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"

namespace tamarind {
namespace {

class EditingWindowTest : public MainWindowTest {
protected:
    HWND Box() const { return Find(kIdTxtInplaceEdit); }
    HWND Sample() const { return Find(kIdCmdColorSample); }
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
        Do(Command::EditValue);
        ASSERT_TRUE(IsWindowVisible(Box()));
        EXPECT_EQ(TextOf(Box()), "ShowHidden=0");
        const RECT list = BoundsOf(Find(kIdListView1));
        const RECT row = PlaceOfRow(Find(kIdListView1), 1);
        const RECT box = BoundsOf(Box());
        EXPECT_EQ(box.top, list.top + row.top + c.rowMargin);
        EXPECT_EQ(box.bottom - box.top, row.bottom - row.top - c.rowMargin);
        EXPECT_EQ(box.left, list.left + row.left + c.iconWidth);
        EXPECT_LE(box.right, list.right);
        // Where the first letter stands, once the last one is in sight.
        const auto first = static_cast<short>(SendMessageW(Box(), EM_POSFROMCHAR, 0, 0));
        EXPECT_EQ(first >= 0, c.hasRoom);

        Resize(Main(), 800, 500);
        EXPECT_TRUE(IsWindowVisible(Box()));
        EXPECT_EQ(BoundsOf(Box()).left - BoundsOf(Find(kIdListView1)).left, box.left - list.left);
    }
}

TEST_F(EditingWindowTest, ScrollingClosesTheBoxAndStoresNothing) {
    PutManyKeys();
    Start();
    Do(Command::EditValue);
    SetWindowTextW(Box(), L"K0=5");
    Send(kIdListView1, LVM_SCROLL, 0, 100);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(Box()); }));
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(Rows()[0], "K0");

    // Undoing brings the key's row back into sight and makes it the selected one.
    Do(Command::EditSetValue0);
    Press(kIdListView1, VK_END);
    Do(Command::EditUndo);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(Send(kIdListView1, LVM_GETTOPINDEX), 0);
}

TEST_F(EditingWindowTest, AValueThatIsTooLongStaysInTheBox) {
    Start();
    Do(Command::EditValue);
    SetWindowTextW(Box(), std::wstring(100000, L'x').c_str());
    SendMessageW(Box(), EM_SETSEL, 100000, 100000);
    SendMessageW(Box(), WM_CHAR, 'y', 1);
    SendMessageW(Box(), WM_CHAR, VK_RETURN, 1);
    ASSERT_FALSE(world.prompts.messages.empty());
    EXPECT_NE(world.prompts.messages[0].find("at most 4,095 characters"), std::string::npos);
    EXPECT_EQ(GetFocus(), Box());
    EXPECT_TRUE(IsWindowVisible(Box()));
    EXPECT_EQ(GetWindowTextLengthW(Box()), 100001);
    SendMessageW(Box(), WM_CHAR, VK_ESCAPE, 1);
    EXPECT_FALSE(IsWindowVisible(Box()));
    EXPECT_EQ(Rows()[0], "PanelsVertical=1");
}

TEST_F(EditingWindowTest, AButtonFirstClosesTheBox) {
    Start();
    const auto toolbar = reinterpret_cast<LPARAM>(Find(kIdToolbar1));
    const auto click = [&](Command command) {
        SendMessageW(Main(), WM_COMMAND, static_cast<WPARAM>(command), toolbar);
    };
    Do(Command::EditValue);
    SetWindowTextW(Box(), L"PanelsVertical=typed");
    Do(Command::EditDelete);  // of the menu
    EXPECT_TRUE(IsWindowVisible(Box()));
    click(Command::EditValue);
    EXPECT_TRUE(IsWindowVisible(Box()));
    EXPECT_EQ(TextOf(Box()), "PanelsVertical=1");
    click(Command::EditDelete);
    EXPECT_FALSE(IsWindowVisible(Box()));
    EXPECT_EQ(Rows()[0], "PanelsVertical");
}

TEST_F(EditingWindowTest, ColorKeysHaveASample) {
    Start();
    Press(kIdListView1, VK_END);
    EXPECT_TRUE(IsWindowVisible(Sample()));
    const auto colorAt = [&](int x, int y) {
        UpdateWindow(Sample());
        return GetPixel(ScreenDC(Sample()).Get(), x, y);
    };
    EXPECT_EQ(TextOf(Sample()), "");  // the system's color: a cross
    EXPECT_EQ(colorAt(4, 4), GetSysColor(COLOR_BTNTEXT));
    EXPECT_EQ(colorAt(4, 20), GetSysColor(COLOR_BTNTEXT));
    EXPECT_EQ(colorAt(20, 4), GetSysColor(COLOR_BTNTEXT));
    Do(Command::EditValue);
    SetWindowTextW(Box(), L"BackColor=16711935");
    SendMessageW(Box(), WM_CHAR, VK_RETURN, 1);
    EXPECT_EQ(TextOf(Sample()), "#FF00FF");
    const HWND list = Find(kIdListView1);
    const RECT at = BoundsOf(Sample());
    EXPECT_EQ(BoundsOf(list).right - at.right, 6);
    EXPECT_EQ(WindowFromPoint({at.left + 5, at.top + 5}), list);  // clicks go through it
    EXPECT_EQ(colorAt(12, 12), RGB(255, 0, 255));

    world.prompts.colorsToChoose = {"255"};
    Do(Command::EditBrowseValue);
    EXPECT_EQ(TextOf(Sample()), "#FF0000");
    Do(Command::EditUndo);
    EXPECT_EQ(TextOf(Sample()), "#FF00FF");
    EXPECT_EQ(world.prompts.startColors, std::vector<std::int32_t>{0xFF00FF});
    Do(Command::EditDelete);
    EXPECT_EQ(TextOf(Sample()), "");
    Press(kIdListView1, VK_HOME);
    EXPECT_FALSE(IsWindowVisible(Sample()));
}

TEST_F(EditingWindowTest, NothingIsDoneWhileASaveWaits) {
    Start();
    Do(Command::EditSetValue0);
    world.programs.isRunning = true;
    int waits = 0;
    world.programs.onWait = [&] {
        ++waits;
        SendMessageW(Main(), WM_CLOSE, 0, 0);
        EXPECT_EQ(SendMessageW(Main(), WM_QUERYENDSESSION, 0, 0), FALSE);
        Do(Command::EditSetValue1);
        Do(Command::FileSaveAndRestart);
        Press(kIdListView1, VK_DELETE);
        Press(kIdListView1, VK_RETURN);
        EXPECT_FALSE(IsWindowVisible(Box()));
    };
    Do(Command::FileSaveAndRestart);
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(Rows()[0], "PanelsVertical=0");
    EXPECT_TRUE(world.prompts.messages.empty());
    ASSERT_NE(Main(), nullptr);

    // Afterwards it closes, unless the user cancels that.
    Do(Command::EditSetValue1);
    EXPECT_EQ(SendMessageW(Main(), WM_QUERYENDSESSION, 0, 0), FALSE);
    EXPECT_NE(Main(), nullptr);
    world.prompts.answers = {Answer::No};
    SendMessageW(Main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(Main(), nullptr);
}

}  // namespace
}  // namespace tamarind
