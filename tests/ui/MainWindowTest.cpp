#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "ui/keys/KeysIds.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

TEST_F(MainWindowTest, ShowsAndFollowsTheSession) {
    Start();
    EXPECT_EQ(TextOf(Main()), "Tamarind Configuration Editor 5.01 - C:\\TC\\Wincmd.ini");
    EXPECT_EQ(Nodes(),
              (Strings{"Total Commander Configuration", "Display", "Panels", "Colors", "Broken"}));
    EXPECT_EQ(Rows(), (Strings{"PanelsVertical=1", "ShowHidden=0", "BackColor"}));
    // Numeric, commented, and numeric in the dimmed half of the list.
    for (const auto& [row, picture] : {std::pair(0, 0), std::pair(1, 2), std::pair(2, 3)}) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        Send(kIdListView1, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(item.iImage, picture);
    }
    ListView_SetItemState(Find(kIdListView1), 0, 0, LVIS_SELECTED);  // a click beside the rows
    EXPECT_TRUE(WaitUntil([&] { return SelectedRow() == 0; }));
    const HWND description = Find(kIdTxtDescriptionBox);
    EXPECT_EQ(TextOf(description), "Arrange panels.\r\n0 = side by side");
    const auto status = [&](WPARAM part) { return Told(kIdStatusBar1, SB_GETTEXTW, part); };
    EXPECT_EQ(status(0), "Data File:  tc all keys english.tmdf");
    EXPECT_EQ(status(1), "Target Section:  [Configuration]  Panels");
    EXPECT_EQ(status(2), "3  Key(s)");

    SetFocus(description);
    Press(kIdTreeView1, VK_DOWN);  // a heading
    EXPECT_EQ(Rows(), Strings{});
    EXPECT_FALSE(IsWindowEnabled(description));
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    Press(kIdListView1, VK_RETURN);
    NMITEMACTIVATE click{};
    click.hdr = {Find(kIdListView1), kIdListView1, static_cast<UINT>(NM_DBLCLK)};
    click.iItem = -1;
    SendMessageW(GetParent(Find(kIdListView1)), WM_NOTIFY, kIdListView1,
                 reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(world.prompts.beeps, 2);
    Press(kIdTreeView1, VK_DOWN);
    EXPECT_TRUE(IsWindowEnabled(description));
    Press(kIdListView1, VK_DOWN);
    EXPECT_EQ(world.session->Selection().Rows().CurrentKey(), 2U);
    EXPECT_EQ(TextOf(description), "Description not available!");
    world.session->Selection().GoToKey(3);
    const HWND tree = Find(kIdTreeView1);
    EXPECT_EQ(TreeView_GetSelection(tree), TreeView_GetRoot(tree));
    EXPECT_EQ(SelectedRow(), 2);
    EXPECT_EQ(status(1), "Target Section:  [Colors]  Colors");
    SetFocus(description);
    SendMessageW(Main(), WM_ACTIVATE, WA_INACTIVE, 0);
    Do(Command::ViewDescription);
    SetFocus(Main());
    EXPECT_EQ(GetFocus(), tree) << "the control that had it is hidden";
}

TEST_F(MainWindowTest, KeysOfTheFileAloneStandAtTheEndOfTheTree) {
    Start();
    const Strings described = Nodes();
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nOwn=5\r\n[searches]\r\na=1\r\n");
    world.disk.Wait(10);
    world.session->Selection().SelectCategory(2);
    world.session->Settings().CheckOutsideChanges();
    Strings all = described;
    all.insert(all.end(), {"Only in This File", "[Configuration]: other keys", "[searches]"});
    EXPECT_EQ(Nodes(), all);
    EXPECT_EQ(world.session->Selection().SelectedNode(), 2);
    SetFocus(Find(kIdTreeView1));
    Press(kIdTreeView1, VK_END);
    EXPECT_EQ(Rows(), (Strings{"a=1"}));
    Do(Command::ViewUndescribed);
    EXPECT_EQ(Nodes(), described);
    EXPECT_EQ(Rows().size(), 3U);
    Do(Command::ViewUndescribed);
    EXPECT_EQ(Nodes(), all);
}

TEST_F(MainWindowTest, ToolbarAndSplittersAreReachedByKeys) {
    Start();
    const auto goTo = [&](int id) {
        for (int steps = 0; steps < 9 && GetFocus() != Find(id); ++steps) {
            Do(kIdNextPart);
        }
        ASSERT_EQ(GetFocus(), Find(id));
    };
    goTo(kIdFrame1);
    const LONG width = WidthOf(Find(kIdTreeView1));
    Press(kIdFrame1, VK_RIGHT);
    Press(kIdFrame1, VK_RIGHT);
    Press(kIdFrame1, VK_LEFT);
    Press(kIdFrame1, VK_DOWN);
    EXPECT_EQ(WidthOf(Find(kIdTreeView1)), width + ScaledPixels(10, WindowDpi(Main())));
    Press(kIdFrame1, VK_RETURN);
    EXPECT_NE(GetFocus(), Find(kIdFrame1));
    goTo(kIdFrame2);
    const LONG height = HeightOf(Find(kIdDescriptionPane));
    Press(kIdFrame2, VK_UP);
    EXPECT_GT(HeightOf(Find(kIdDescriptionPane)), height);

    goTo(kIdToolbar1);
    const auto hot = [&] {
        TBBUTTON button{};
        Send(kIdToolbar1, TB_GETBUTTON, static_cast<WPARAM>(Send(kIdToolbar1, TB_GETHOTITEM)),
             reinterpret_cast<LPARAM>(&button));
        return static_cast<Command>(button.idCommand);
    };
    EXPECT_EQ(hot(), Command::FileOpen);
    EXPECT_EQ(Told(kIdToolbar1, TB_GETBUTTONTEXTW, static_cast<WPARAM>(Command::FileSave)), "Save");
    for (int steps = 0; steps < 20 && hot() != Command::ViewActiveKeys; ++steps) {
        Press(kIdToolbar1, VK_RIGHT);
        EXPECT_TRUE(world.session->States().IsEnabled(hot()));
    }
    Press(kIdToolbar1, VK_RETURN);
    EXPECT_EQ(world.session->Selection().Filter(), KeyFilter::ShowActive);
    Press(kIdToolbar1, VK_ESCAPE);
    EXPECT_EQ(Send(kIdToolbar1, TB_GETHOTITEM), -1);
}

TEST_F(MainWindowTest, KeysAreAddedAndLinesRemovedInDialogs) {
    Start();
    const auto type = [&](const wchar_t* name) {
        SetWindowTextW(In(IDC_ADDKEY_CBONAME), name);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_ADDKEY_CBONAME, CBN_EDITCHANGE), 0);
    };
    Show(
        L"frmAddKey",
        [&] {
            EXPECT_EQ(TextOf(In(IDC_ADDKEY_CBOSECTION)), "Configuration");
            EXPECT_FALSE(IsWindowEnabled(In(IDOK)));
            Click(IDOK);  // the Enter key
            type(L"a=b");
            EXPECT_EQ(TextOf(In(IDC_ADDKEY_LBLFAULT)), world.session->Place().Text(4194));
            type(L"Own");
            EXPECT_TRUE(IsWindowEnabled(In(IDOK)));
            Click(IDOK);
        },
        [&] { Do(Command::EditAddKey); });
    EXPECT_EQ(Rows(), (Strings{"Own"}));
    EXPECT_TRUE(IsWindowVisible(Find(kIdTxtInplaceEdit))) << "its value is typed next";
    UseOwnDataFile();
    world.session->Adding().Add("Configuration", "Own");
    Show(
        L"frmDescribeKey",
        [&] {
            SetWindowTextW(In(IDC_DESCRIBE_TXTTEXT), L"Mine.");
            Click(IDOK);
        },
        [&] { Do(Command::EditDescribe); });
    EXPECT_EQ(TextOf(Find(kIdTxtDescriptionBox)), "Mine.");

    const std::string text = "[Colors]\r\ngarbage\r\nBackColor=1\r\nbackcolor=2\r\n";
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\n" + text);
    world.disk.Wait(10);
    Show(
        L"frmIgnoredLines",
        [&] {
            const HWND list = In(IDC_IGNORED_LSTLINES);
            EXPECT_EQ(RowsIn(list), (Strings{"3", "5"}));
            EXPECT_FALSE(IsWindowEnabled(In(IDOK))) << "no key";
            Click(IDC_IGNORED_CMDDELETE);
            EXPECT_EQ(CellIn(list, 0, 1), "backcolor=2");
            Click(IDC_IGNORED_CMDUNDO);
            SelectRow(list, 1);
            Click(IDOK);
        },
        [&] { Do(Command::ViewIgnoredLines); });
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), "[Configuration]\r\n" + text);
    EXPECT_EQ(Rows().at(SelectedRow()), "BackColor=1");
}

TEST_F(MainWindowTest, ARightClickSelectsTheCategoryOfItsMenu) {
    Start();
    const HWND tree = Find(kIdTreeView1);
    RECT heading{};
    TreeView_GetItemRect(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree)), &heading, TRUE);
    ClientToScreen(tree, reinterpret_cast<POINT*>(&heading));
    Strings rows = Rows();
    LONG menuTop = 0;
    Timer timer([&] {
        rows = Rows();
        menuTop = BoundsOf(FindWindowW(L"#32768", nullptr)).top;
        EndMenu();
    });
    timer.Start(Main(), 10);
    SendMessageW(tree, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(tree),
                 MAKELPARAM(heading.left + 3, heading.top + 3));
    EXPECT_EQ(rows, Strings{});
    // The key of the menu opens it below the row.
    Press(kIdTreeView1, VK_HOME);
    const HWND list = Find(kIdListView1);
    SendMessageW(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1);
    EXPECT_NEAR(menuTop, BoundsOf(list).top + PlaceOfRow(list, 0).bottom, 3) << "but for frames";
}

TEST_F(MainWindowTest, ButtonsAndMenusFollowTheCommandTable) {
    Start();
    Do(Command::ViewInactiveKeys);
    EXPECT_EQ(Rows(), (Strings{"ShowHidden=0", "BackColor"}));
    const HMENU bar = GetMenu(Main());
    for (int at = 0; at < GetMenuItemCount(bar); ++at) {
        SendMessageW(Main(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(bar, at)), at);
    }
    for (const CommandInfo& info : AllCommands()) {
        SCOPED_TRACE(info.textNumber);
        const auto button = static_cast<UINT>(info.command);
        const bool isEnabled = world.session->States().IsEnabled(info.command);
        const bool isChecked = world.session->States().IsChecked(info.command);
        const UINT state = GetMenuState(bar, button, MF_BYCOMMAND);
        // Some have a menu of their own, or are in those of the lists.
        if (info.command != Command::FileRecentFiles && state != static_cast<UINT>(-1)) {
            EXPECT_EQ((state & MF_GRAYED) == 0, isEnabled);
            EXPECT_EQ((state & MF_CHECKED) != 0, isChecked);
        }
        if (!info.toolbarName.empty()) {
            EXPECT_EQ(Send(kIdToolbar1, TB_ISBUTTONENABLED, button) != 0, isEnabled);
            EXPECT_EQ(Send(kIdToolbar1, TB_ISBUTTONCHECKED, button) != 0, isChecked);
        }
    }
    EXPECT_EQ(Send(kIdToolbar1, TB_BUTTONCOUNT), 15);
}

TEST_F(MainWindowTest, PanesComeBackAsTheyWere) {
    PutOwnSettings("DescriptionPanelHeight=1500\r\n");  // of what is above it
    Start();
    Resize(Main(), 700, 500);
    const HWND pane = Find(kIdDescriptionPane);
    const LONG height = HeightOf(pane);
    Do(Command::ViewDescription);
    EXPECT_FALSE(IsWindowVisible(Find(kIdTxtDescriptionBox)));
    Do(Command::ViewToolbar);
    EXPECT_FALSE(IsWindowVisible(Find(kIdToolbar1)));
    Do(Command::ViewDescription);
    EXPECT_EQ(HeightOf(pane), height);
    Do(Command::ViewToolbar);
    Resize(Main(), 700, 300);  // too low for it
    EXPECT_LT(HeightOf(pane), height);
    Resize(Main(), 700, 500);
    EXPECT_EQ(HeightOf(pane), height);
}

TEST_F(MainWindowTest, BarsAreDragged) {
    PutOwnSettings("SplitPosition=3000\r\n");  // 200 pixels
    Start();
    SetFocus(Find(kIdTreeView1));
    const LONG width = WidthOf(Find(kIdPicture1));
    const auto move = [&](LONG x, WPARAM buttons = MK_LBUTTON) {
        Send(kIdFrame1, WM_MOUSEMOVE, buttons, MAKELPARAM(x, 5));
        return BoundsOf(Find(kIdFrame1)).left - BoundsOf(Find(kIdPicture1)).left;
    };
    EXPECT_EQ(move(60), 200);
    Send(kIdFrame1, WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(move(60, MK_LBUTTON | MK_RBUTTON), 200);
    EXPECT_EQ(move(60), 260);
    EXPECT_EQ(BoundsOf(Find(kIdTreeView1)).right, BoundsOf(Find(kIdFrame1)).left);
    EXPECT_EQ(move(-260), 260);  // no tree would be left, or too little of the list
    EXPECT_EQ(move(width - 260 - 140), 260);
    EXPECT_EQ(move(width - 260 - 141), width - 141);
    Send(kIdTreeView1, WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(move(60), 200);

    // Another window comes up meanwhile.
    Send(kIdFrame1, WM_LBUTTONDOWN, MK_LBUTTON);
    EXPECT_EQ(move(60), 260);
    SetCapture(Main());
    EXPECT_EQ(move(60), 260);
    ReleaseCapture();
    DestroyWindow(Main());
    EXPECT_EQ(OwnSettings({"SplitPosition"}), Strings{"3900"});
}

TEST_F(MainWindowTest, ATypedDescriptionOffersToBeSaved) {
    Start();
    Resize(Main(), 700, 500);
    const HWND toolbar = Find(kIdToolbar2);
    Press(kIdListView1, VK_DOWN);
    SetFocus(Find(kIdTxtDescriptionBox));  // changes nothing, though the key has no description
    Press(kIdListView1, VK_UP);
    EXPECT_FALSE(IsWindowVisible(toolbar));
    Send(kIdTxtDescriptionBox, EM_SETSEL, 0, -1);
    Send(kIdTxtDescriptionBox, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"one\r\ntwo"));
    EXPECT_TRUE(IsWindowVisible(toolbar));
    RECT inside = BoundsOf(Find(kIdTxtDescriptionBox));
    InflateRect(&inside, -1, -1);
    EXPECT_TRUE(IsInside(BoundsOf(toolbar), inside));
    SendMessageW(toolbar, TB_PRESSBUTTON, static_cast<WPARAM>(Command::FileSaveDataFile), 1);
    Do(Command::FileSaveDataFile);
    EXPECT_FALSE(IsWindowVisible(toolbar));
    EXPECT_NE(world.disk.BytesOf(SessionWorld::kWincmdData).find("PanelsVertical=0///one@two\r\n"),
              std::string::npos);
}

TEST_F(MainWindowTest, MenusListFavoritesAndRecentFiles) {
    PutOwnSettings(
        "RecentFiles1=C:\\a.ini\r\nRecentFiles3=C:\\b.ini\r\n"
        "[FavoritesList]\r\nShowHidden=Hidden\r\nSp_1=-\r\nGone=Gone\r\n");
    Start();
    const HMENU bar = GetMenu(Main());
    const auto entriesOf = [&](HMENU menu, LPARAM place) {
        SendMessageW(Main(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), place);
        std::string entries;
        for (UINT at = 0; static_cast<int>(at) < GetMenuItemCount(menu); ++at) {
            wchar_t text[100] = L"";
            GetMenuStringW(menu, at, text, ARRAYSIZE(text), MF_BYPOSITION);
            const UINT state = GetMenuState(menu, at, MF_BYPOSITION);
            const std::string name = (state & MF_GRAYED) != 0 ? "(off)" : Narrow(text);
            entries += ((state & MF_SEPARATOR) != 0 ? "-" : name) + "\n";
        }
        return entries;
    };
    // The last category has no such keys.
    for (const auto& [key, end] :
         {std::pair(VK_END, "\n(off)\n-\n(off)\n"), std::pair(VK_HOME, "\nHidden\n-\n(off)\n")}) {
        Press(kIdTreeView1, key);
        const std::string entries = entriesOf(GetSubMenu(bar, 4), 4);
        EXPECT_TRUE(entries.ends_with(end)) << entries;
    }
    Do(kIdFavoriteFirst);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));
    EXPECT_EQ(SelectedRow(), 1);

    const HMENU recent = GetSubMenu(GetSubMenu(bar, 0), 12);
    EXPECT_EQ(entriesOf(recent, 11), "&1 C:\\a.ini\n&3 C:\\b.ini\n-\nClear List\n");
    world.disk.Put("C:\\b.ini", "[Configuration]\r\nPanelsVertical=5\r\n");
    Do(static_cast<int>(GetMenuItemID(recent, 1)));
    EXPECT_EQ(Rows()[0], "PanelsVertical=5");
    world.prompts.answers = {Answer::Yes};
    Do(kIdClearRecent);
    EXPECT_EQ(entriesOf(recent, 11), "(off)\n-\n(off)\n");
}

// A file that is still being written is looked at again, without the user doing anything.
TEST_F(MainWindowTest, AYoungFileIsLookedAtAgain) {
    Start();
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=7\r\n");
    const auto isTaken = [&] { return Rows()[0] == "PanelsVertical=7"; };
    world.disk.reads = 0;
    SendMessageW(Main(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_TRUE(WaitUntil([&] { return world.disk.reads > 0; }));
    EXPECT_FALSE(isTaken());
    world.disk.Wait(10);
    EXPECT_TRUE(WaitUntil(isTaken));
}

TEST_F(MainWindowTest, NothingOverlapsAtTheSmallestSizeAndAfterAChangeOfResolution) {
    Start();
    Resize(Main(), 1, 1);
    ExpectNoOverlaps(Main());
    EXPECT_GE(HeightOf(Find(kIdTxtDescriptionBox)), 60);
    EXPECT_GE(HeightOf(Find(kIdListView1)), 60);

    SetDpi(144, {50, 60, 1100, 900});
    EXPECT_EQ(HeightOf(Main()), 840);
    for (const auto list :
         {Send(kIdToolbar1, TB_GETIMAGELIST), Send(kIdTreeView1, TVM_GETIMAGELIST, TVSIL_NORMAL),
          Send(kIdListView1, LVM_GETIMAGELIST, LVSIL_SMALL)}) {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(list), &width, &height);
        EXPECT_EQ(height, 24);
    }
    EXPECT_EQ(FontHeightOf(Find(kIdListView1)), -20);
    EXPECT_EQ(Send(kIdListView1, LVM_GETCOLUMNWIDTH, 0), WidthOf(Find(kIdListView1)) - 50);
    EXPECT_EQ(BoundsOf(Find(kIdFrame1)).left - BoundsOf(Find(kIdPicture1)).left, 400);
    ExpectNoOverlaps(Main());
}

TEST_F(MainWindowTest, ALanguageThatVanishesEndsWithTheNextWindow) {
    world.disk.Put("C:\\a.lng", "[UserLanguage]\r\n3073=Wurzel\r\n253=Suche\r\n");
    PutOwnSettings("UseDefaultLanguage=0\r\n[Common]\r\nLanguageFile=C:\\a.lng\r\n");
    Start();
    EXPECT_EQ(Nodes()[0], "Wurzel");
    world.disk.Remove("C:\\a.lng");
    Do(Command::SearchFind);
    EXPECT_EQ(TextOf(FindWindowW(L"frmSearchFor", nullptr)), "Find");
    EXPECT_EQ(Nodes()[0], "Total Commander Configuration");
    EXPECT_EQ(world.prompts.messages, Strings{"XCannot find language file!"});
}

// The place of the next start: where the window was.
TEST_F(MainWindowTest, RestoresAndStoresItsPlace) {
    const Strings keys = {"MainWindowLeft",   "MainWindowTop", "MainWindowWidth",
                          "MainWindowHeight", "SplitPosition", "DescriptionPanelHeight"};
    PutOwnSettings(
        "MainWindowLeft=1500\r\nMainWindowTop=900\r\nMainWindowWidth=9000\r\n"
        "MainWindowHeight=7500\r\nSplitPosition=3001\r\nDescriptionPanelHeight=3002\r\n");
    Start(SW_HIDE);
    const RECT bounds = BoundsOf(Main());
    EXPECT_TRUE(EqualRect(&bounds, std::data({RECT{100, 60, 700, 560}})));
    SetWindowPos(Main(), nullptr, 120, 70, 640, 600, SWP_NOZORDER);
    DestroyWindow(Main());
    EXPECT_EQ(OwnSettings(keys), (Strings{"1800", "1050", "9600", "9000", "3001", "4502"}));

    PutOwnSettings(
        "MainWindowLeft=900000\r\nMainWindowTop=-90000\r\nMainWindowWidth=9000\r\n"
        "DescriptionPanelHeight=3002\r\nMainWindowMaxmized=1\r\n");
    Start();
    EXPECT_TRUE(IsZoomed(Main()));
    DestroyWindow(Main());
    // The former place stays, and so does the height that belongs to the maximized window.
    EXPECT_EQ(OwnSettings({keys[0], "MainWindowMaxmized", keys[5]}),
              (Strings{"900000", "1", "3002"}));
}

// A damaged settings file: what it says of sizes is not used as it stands, and not rewritten.
TEST_F(MainWindowTest, DamagedSizesAreUsableAndStayInTheFile) {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    for (const std::string value : {"0", "-5", "2147483647", "-2147483648", "damaged"}) {
        SCOPED_TRACE(value);
        std::string lines = "StartUpIniFile=Wincmd\r\n";  // as a start writes it
        for (const char* const key :
             {"FontSize", "MainWindowLeft", "MainWindowTop", "MainWindowWidth", "MainWindowHeight",
              "SplitPosition", "DescriptionPanelHeight", "FavoriteWindowLeft", "FavoriteWindowTop",
              "FavoriteWindowWidth", "FavoriteWindowHeight"}) {
            lines += std::string(key) + "=" + value + "\r\n";
        }
        PutOwnSettings(lines);
        const std::string file = StoredSettings();
        Start(SW_HIDE);
        EXPECT_EQ(FontHeightOf(Find(kIdListView1)), -13);
        Do(Command::FavoritesOrganize);
        const HWND organizer = FindWindowW(L"frmOrganizeFavorites", nullptr);
        for (const auto& [part, width, height] :
             {std::tuple(Main(), 400, 300), std::tuple(organizer, 184, 267),
              std::tuple(Find(kIdTreeView1), 130, 60), std::tuple(Find(kIdListView1), 130, 60),
              std::tuple(Find(kIdDescriptionPane), 130, 60)}) {
            EXPECT_TRUE(IsInside(BoundsOf(part), area)) << BoundsOf(part).left;
            EXPECT_GE(WidthOf(part), width);
            EXPECT_GE(HeightOf(part), height);
        }
        SendMessageW(organizer, WM_COMMAND, IDCANCEL, 0);
        DestroyWindow(Main());
        EXPECT_EQ(StoredSettings(), file);
    }
}

}  // namespace
}  // namespace tamarind
