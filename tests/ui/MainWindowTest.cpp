#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"

namespace tamarind {
namespace {

TEST_F(MainWindowTest, ShowsCategoriesKeysAndStatus) {
    Start();
    EXPECT_EQ(TextOf(window->Handle()), "Tamarind Configuration Editor 5.01 - C:\\TC\\Wincmd.ini");
    EXPECT_EQ(Nodes(),
              (Strings{"Total Commander Configuration", "Display", "Panels", "Colors", "Broken"}));
    EXPECT_EQ(Rows(), (Strings{"PanelsVertical=1", "ShowHidden=0", "BackColor"}));
    // Numeric, commented, and numeric in the dimmed half of the list.
    EXPECT_EQ(Picture(0), 0);
    EXPECT_EQ(Picture(1), 2);
    EXPECT_EQ(Picture(2), 3);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(TextOf(Find(kIdTxtDescriptionBox)), "Arrange panels.\r\n0 = side by side");
    EXPECT_EQ(Status(0), "Data File:  tc all keys english.tmdf");
    EXPECT_EQ(Status(1), "Target Section:  [Configuration]");
    EXPECT_EQ(Status(2), "3  Key(s)");
}

TEST_F(MainWindowTest, KeysMoveThroughTreeAndList) {
    Start();
    Press(kIdTreeView1, VK_DOWN);  // a heading
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsWindowEnabled(Find(kIdTxtDescriptionBox)));
    EXPECT_EQ(Status(1), "");
    Command(tamarind::Command::ViewActiveKeys);
    EXPECT_EQ(world.prompts.beeps, 1);
    EXPECT_TRUE(IsButton(tamarind::Command::ViewAllKeys, TB_ISBUTTONCHECKED));

    Press(kIdTreeView1, VK_DOWN);
    EXPECT_EQ(Rows(), (Strings{"PanelsVertical=1", "ShowHidden=0"}));
    EXPECT_TRUE(IsWindowEnabled(Find(kIdTxtDescriptionBox)));
    Press(kIdListView1, VK_DOWN);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(world.session->CurrentKey(), 2U);
    EXPECT_EQ(TextOf(Find(kIdTxtDescriptionBox)), "Description not available!");

    Command(tamarind::Command::ViewInactiveKeys);
    EXPECT_EQ(Rows(), Strings{"ShowHidden=0"});
    EXPECT_TRUE(IsButton(tamarind::Command::ViewInactiveKeys, TB_ISBUTTONCHECKED));
    EXPECT_FALSE(IsButton(tamarind::Command::ViewAllKeys, TB_ISBUTTONCHECKED));
    const HMENU menu = GetSubMenu(GetMenu(window->Handle()), 2);
    SendMessageW(window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 2);
    const UINT state =
        GetMenuState(menu, static_cast<UINT>(tamarind::Command::ViewInactiveKeys), 0);
    EXPECT_TRUE(state & MF_CHECKED);

    world.session->GoToKey(3);
    EXPECT_EQ(SelectedRow(), 2);
    EXPECT_EQ(Status(1), "Target Section:  [Colors]");
}

TEST_F(MainWindowTest, AClickBesideTheRowsKeepsTheCurrentOne) {
    Start();
    LVITEMW none{};
    none.stateMask = LVIS_SELECTED;
    Send(kIdListView1, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&none));
    MSG message{};
    while (PeekMessageW(&message, Find(kIdListView1), 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
    EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(MainWindowTest, ButtonsAndMenusFollowTheCommandTable) {
    Start();
    const HMENU bar = GetMenu(window->Handle());
    for (int at = 0; at < GetMenuItemCount(bar); ++at) {
        SendMessageW(window->Handle(), WM_INITMENUPOPUP,
                     reinterpret_cast<WPARAM>(GetSubMenu(bar, at)), at);
    }
    for (const CommandInfo& info : AllCommands()) {
        const bool isEnabled = world.session->IsEnabled(info.command);
        if (info.command != tamarind::Command::FileRecentFiles) {  // a menu of its own
            const UINT state = GetMenuState(bar, static_cast<UINT>(info.command), MF_BYCOMMAND);
            EXPECT_EQ((state & MF_GRAYED) == 0, isEnabled) << info.textNumber;
        }
        if (!info.toolbarName.empty()) {
            EXPECT_EQ(IsButton(info.command, TB_ISBUTTONENABLED), isEnabled) << info.toolbarName;
        }
    }
    EXPECT_EQ(Send(kIdToolbar1, TB_BUTTONCOUNT), 15);
}

TEST_F(MainWindowTest, StatusBarClickOpensAnotherDataFile) {
    Start();
    world.prompts.filesToChoose = {SessionWorld::kWcxFtpData};
    NMMOUSE click{};
    click.hdr = {Find(kIdStatusBar1), kIdStatusBar1, static_cast<UINT>(NM_CLICK)};
    for (const DWORD_PTR part : {1, 2, 0}) {
        EXPECT_TRUE(world.prompts.questions.empty());
        click.dwItemSpec = part;
        SendMessageW(window->Handle(), WM_NOTIFY, kIdStatusBar1, reinterpret_cast<LPARAM>(&click));
    }
    EXPECT_EQ(world.prompts.questions.size(), 1U);
    EXPECT_EQ(Nodes(), (Strings{"Total Commander Configuration", "General"}));
    EXPECT_EQ(Rows(), Strings{"WaitDelay=9"});
}

TEST_F(MainWindowTest, PanesHideAndKeepTheirSizes) {
    Start();
    SetSize(700, 500);
    const LONG height = HeightOf(Find(kIdDescriptionPane));
    SetSize(800, 640);
    EXPECT_EQ(HeightOf(Find(kIdDescriptionPane)), height);
    Command(tamarind::Command::ViewDescription);
    EXPECT_FALSE(IsWindowVisible(Find(kIdTxtDescriptionBox)));
    Command(tamarind::Command::ViewToolbar);
    EXPECT_FALSE(IsWindowVisible(Find(kIdToolbar1)));
    Command(tamarind::Command::ViewDescription);
    EXPECT_EQ(HeightOf(Find(kIdDescriptionPane)), height);
}

TEST_F(MainWindowTest, ATypedDescriptionOffersToBeSaved) {
    Start();
    SetSize(700, 500);
    Press(kIdListView1, VK_DOWN);
    Press(kIdListView1, VK_UP);
    EXPECT_FALSE(IsWindowVisible(Find(kIdToolbar2)));
    Send(kIdTxtDescriptionBox, EM_SETSEL, 0, -1);
    Send(kIdTxtDescriptionBox, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"one\r\ntwo"));
    EXPECT_TRUE(IsWindowVisible(Find(kIdToolbar2)));
    const RECT toolbar = BoundsOf(Find(kIdToolbar2));
    const RECT box = BoundsOf(Find(kIdTxtDescriptionBox));
    EXPECT_TRUE(toolbar.left > box.left && toolbar.right < box.right);
    EXPECT_TRUE(toolbar.top > box.top && toolbar.bottom < box.bottom);
    Send(kIdToolbar2, TB_PRESSBUTTON, static_cast<WPARAM>(tamarind::Command::FileSaveDataFile), 1);
    Command(tamarind::Command::FileSaveDataFile);
    EXPECT_FALSE(IsWindowVisible(Find(kIdToolbar2)));
    EXPECT_NE(world.disk.BytesOf(SessionWorld::kWincmdData).find("PanelsVertical=0///one@two\r\n"),
              std::string::npos);
}

TEST_F(MainWindowTest, MenusListFavoritesAndRecentFiles) {
    world.disk.Put(SessionWorld::kOwnSettings,
                   "[ConfigurationEditor]\r\nRecentFiles1=C:\\a.ini\r\nRecentFiles3=C:\\b.ini\r\n"
                   "[FavoritesList]\r\nShowHidden=Hidden\r\nSp_1=-\r\nGone=\xC4\x8D\r\n");
    world.disk.Wait(10);
    Start();
    const HMENU bar = GetMenu(window->Handle());
    const auto textsOf = [](HMENU menu) {
        Strings texts;
        for (int at = 0; at < GetMenuItemCount(menu); ++at) {
            wchar_t text[100] = L"";
            GetMenuStringW(menu, static_cast<UINT>(at), text, ARRAYSIZE(text), MF_BYPOSITION);
            texts.push_back(Narrow(text));
        }
        return texts;
    };
    const HMENU favorites = GetSubMenu(bar, 4);
    EXPECT_EQ(textsOf(favorites).size(), 6U);
    EXPECT_EQ(textsOf(favorites)[3], "Hidden");
    EXPECT_NE(GetMenuState(favorites, 4, MF_BYPOSITION) & MF_SEPARATOR, 0U);
    EXPECT_NE(GetMenuState(favorites, 5, MF_BYPOSITION) & MF_GRAYED, 0U);
    SendMessageW(window->Handle(), WM_COMMAND, kIdFavoriteFirst, 0);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(SelectedRow(), 1);

    const HMENU fileMenu = GetSubMenu(bar, 0);
    const HMENU recent = GetSubMenu(fileMenu, 11);
    SendMessageW(window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(recent), 11);
    EXPECT_EQ(textsOf(recent), (Strings{"&1 C:\\a.ini", "&3 C:\\b.ini", "", "Clear List"}));
    world.prompts.answers = {Answer::Yes};
    SendMessageW(window->Handle(), WM_COMMAND, kIdClearRecent, 0);
    SendMessageW(window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(recent), 11);
    EXPECT_EQ(textsOf(recent), (Strings{"No Recent Files", "", "Clear List"}));
}

TEST_F(MainWindowTest, NothingOverlapsAtTheSmallestSize) {
    Start();
    MINMAXINFO info{};
    SendMessageW(window->Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, 400);
    EXPECT_EQ(info.ptMinTrackSize.y, 300);
    SetSize(400, 300);
    ExpectNoOverlaps(window->Handle());
    EXPECT_GE(HeightOf(Find(kIdTxtDescriptionBox)), 60);
    EXPECT_GE(HeightOf(Find(kIdListView1)), 60);
}

TEST_F(MainWindowTest, FollowsAChangeOfResolution) {
    Start();
    const RECT suggested{50, 60, 1100, 900};
    SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(144, 144),
                 reinterpret_cast<LPARAM>(&suggested));
    EXPECT_EQ(HeightOf(window->Handle()), 840);
    int width = 0;
    int height = 0;
    for (const auto list :
         {Send(kIdToolbar1, TB_GETIMAGELIST), Send(kIdTreeView1, TVM_GETIMAGELIST, TVSIL_NORMAL),
          Send(kIdListView1, LVM_GETIMAGELIST, LVSIL_SMALL)}) {
        ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(list), &width, &height);
        EXPECT_EQ(height, 24);
    }
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(Send(kIdListView1, WM_GETFONT)), sizeof(font), &font);
    EXPECT_EQ(font.lfHeight, -20);
    const RECT list = BoundsOf(Find(kIdListView1));
    EXPECT_EQ(Send(kIdListView1, LVM_GETCOLUMNWIDTH, 0), list.right - list.left - 50);
    EXPECT_EQ(BoundsOf(Find(kIdFrame1)).left - BoundsOf(Find(kIdPicture1)).left, 400);
    ExpectNoOverlaps(window->Handle());
}

TEST_F(MainWindowTest, ProgressCoversTheStatusBarWhileALoadLasts) {
    Start();
    auto& listener = static_cast<SessionListener&>(*window);
    ProgressMeter meter;
    for (int key = 0; key < 500; ++key) {
        meter.Advance();
    }
    listener.OnProgress(meter);
    const RECT progress = BoundsOf(Find(kIdPicProgressBar));
    const RECT status = BoundsOf(Find(kIdStatusBar1));
    EXPECT_TRUE(EqualRect(&progress, &status));
    EXPECT_TRUE(IsWindowVisible(Find(kIdProgressBar1)));
    EXPECT_EQ(Send(kIdProgressBar1, PBM_GETPOS), 501);
    EXPECT_EQ(Send(kIdProgressBar1, PBM_GETRANGE, FALSE), 520);
    listener.OnProgressEnd();
    EXPECT_FALSE(IsWindowVisible(Find(kIdPicProgressBar)));
}

TEST_F(MainWindowTest, LongListCostsNoRows) {
    std::string dataFile;
    for (int key = 0; key < 32000; ++key) {
        if (key % 320 == 0) {
            dataFile += "[S" + std::to_string(key) + "]\r\nCategoryTargetSection=Many\r\n";
        }
        dataFile += "K" + std::to_string(key) + "=1///\r\n";
    }
    world.disk.Put(SessionWorld::kWincmdData, dataFile);
    world.disk.Wait(10);
    Start();
    EXPECT_EQ(RowCount(), 32000);
    EXPECT_EQ(Row(31999), "K31999");
    Press(kIdListView1, VK_END);
    EXPECT_EQ(world.session->CurrentKey(), 32000U);
}

TEST_F(MainWindowTest, RestoresAndStoresItsPlace) {
    PutOwnSettings(
        "MainWindowLeft=1500\r\nMainWindowTop=900\r\nMainWindowWidth=9000\r\n"
        "MainWindowHeight=7500\r\nSplitPosition=3001\r\nDescriptionPanelHeight=3002\r\n");
    Start(SW_HIDE);
    const RECT bounds = BoundsOf(window->Handle());
    EXPECT_TRUE(EqualRect(&bounds, std::data({RECT{100, 60, 700, 560}})));
    SetWindowPos(window->Handle(), nullptr, 120, 70, 640, 600, SWP_NOZORDER);
    DestroyWindow(window->Handle());
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "1800");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowTop"), "1050");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowWidth"), "9600");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowHeight"), "9000");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "3001");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "DescriptionPanelHeight"), "4502");
}

TEST_F(MainWindowTest, ComesBackOntoTheScreenAndOutOfMaximized) {
    PutOwnSettings(
        "MainWindowLeft=900000\r\nMainWindowTop=-90000\r\nMainWindowWidth=9000\r\n"
        "MainWindowHeight=7500\r\nMainWindowMaxmized=1\r\nDescriptionPanelHeight=3002\r\n");
    Start();
    EXPECT_TRUE(IsZoomed(window->Handle()));
    DestroyWindow(window->Handle());
    // The former place stays, and so does the height that belongs to the maximized window.
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "900000");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowMaxmized"), "1");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "DescriptionPanelHeight"), "3002");

    PutOwnSettings(
        "MainWindowLeft=900000\r\nMainWindowTop=-90000\r\nMainWindowWidth=9000\r\n"
        "MainWindowHeight=7500\r\n");
    Start(SW_HIDE);
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const RECT bounds = BoundsOf(window->Handle());
    EXPECT_EQ(bounds.right, area.right);
    EXPECT_EQ(bounds.top, area.top);
    EXPECT_EQ(bounds.right - bounds.left, 600);
}

}  // namespace
}  // namespace tamarind
