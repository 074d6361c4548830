#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/favorites/FavoritesIds.h"
#include "ui/search/SearchIds.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

// The windows that the Search and Favorites menus open, through the main window.
class FindingWindowsTest : public MainWindowTest {
protected:
    static HWND Window(const wchar_t* name) { return FindWindowW(name, nullptr); }
    HWND Search() const { return Window(L"frmSearchFor"); }
    HWND Organizer() const { return Window(L"frmOrganizeFavorites"); }

    void Type(int id, const char* text) const { SetWindowTextW(In(id), Widen(text).c_str()); }
    void PressCloseBox() const {
        SendMessageW(dialog, WM_CLOSE, 0, 0);
        MSG message{};
        while (PeekMessageW(&message, dialog, WM_COMMAND, WM_COMMAND, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    static bool IsSelected(HWND box, int start, int end) {
        return SendMessageW(box, EM_GETSEL, 0, 0) == MAKELRESULT(start, end);
    }

    HWND FavoriteList() const { return GetDlgItem(Organizer(), IDC_ORGANIZE_LISTVIEW1); }
    HWND LabelBox() const { return ListView_GetEditControl(FavoriteList()); }
    // What the organizer's list shows, the selected row in brackets.
    Strings Favorites() const {
        Strings texts = RowsIn(FavoriteList());
        if (const int selected = SelectedIn(FavoriteList()); selected >= 0) {
            std::string& text = texts.at(static_cast<std::size_t>(selected));
            text = "[" + text + "]";
        }
        return texts;
    }
    // Which rows of the organizer's list are grey: "010".
    std::string GreyFavorites() const {
        std::string grey;
        for (int row = 0; row < ListView_GetItemCount(FavoriteList()); ++row) {
            NMLVCUSTOMDRAW draw{};
            draw.nmcd.hdr = {FavoriteList(), IDC_ORGANIZE_LISTVIEW1, NM_CUSTOMDRAW};
            draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
            draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
            SendMessageW(Organizer(), WM_NOTIFY, IDC_ORGANIZE_LISTVIEW1,
                         reinterpret_cast<LPARAM>(&draw));
            grey += draw.clrText == GetSysColor(COLOR_GRAYTEXT) ? '1' : '0';
        }
        return grey;
    }
    std::string StoredFavorites() const {
        const std::string file = world.disk.BytesOf(SessionWorld::kOwnSettings);
        const std::size_t start = file.find("[FavoritesList]\r\n");
        return start == std::string::npos ? "" : file.substr(start + 17);
    }
    void OpenOrganizer(const std::string& favorites, const std::string& settings = "") {
        PutOwnSettings(settings + "[FavoritesList]\r\n" + favorites);
        Start();
        Organize();
        ASSERT_TRUE(IsWindowVisible(dialog));
    }
    void Organize() {
        Command(tamarind::Command::FavoritesOrganize);
        dialog = Organizer();
    }
    // Adds the current key to the favorites; `answer` deals with the window that asks for more.
    void AddFavorite(const std::function<void()>& answer) {
        Show(L"frmFavoriteAdd", answer, [&] { Command(tamarind::Command::FavoritesAdd); });
    }
};

// What its keys do is tried with real ones on the running program.
TEST_F(FindingWindowsTest, TheSearchWindowKeepsItsSettings) {
    Start();
    Command(tamarind::Command::SearchFind);
    dialog = Search();
    const HWND box = In(IDC_SEARCHFOR_TXTFIND);
    EXPECT_EQ(GetFocus(), box);
    EXPECT_FALSE(IsOn(IDC_SEARCHFOR_CMDFINDNEXT));
    EXPECT_FALSE(world.session->States().IsEnabled(tamarind::Command::SearchFindNext));
    // A word of a description, which the box then shows.
    Type(IDC_SEARCHFOR_TXTFIND, "side");
    EXPECT_TRUE(IsOn(IDC_SEARCHFOR_CMDFINDNEXT));
    Click(IDC_SEARCHFOR_OPTKEYDESCRIPTION);
    Click(IDC_SEARCHFOR_CHKWHOLEWORD);
    Click(IDC_SEARCHFOR_CMDFINDNEXT);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_TRUE(IsSelected(Find(kIdTxtDescriptionBox), 21, 25));

    for (const bool usesBox : {false, true}) {
        SetFocus(In(IDCANCEL));
        usesBox ? PressCloseBox() : PressKey(VK_ESCAPE);
        EXPECT_FALSE(IsWindowVisible(dialog));
        ASSERT_TRUE(IsWindow(dialog));
        Command(tamarind::Command::SearchFind);
        EXPECT_TRUE(IsWindowVisible(dialog));
        EXPECT_EQ(GetFocus(), box);
        EXPECT_TRUE(IsSelected(box, 0, 4));
        EXPECT_TRUE(IsChecked(IDC_SEARCHFOR_OPTKEYDESCRIPTION));
    }
    Command(tamarind::Command::SearchFindNext);  // from the first key again
    EXPECT_EQ(world.prompts.messages, Strings{});
    window.reset();
    EXPECT_EQ(Search(), nullptr);
}

TEST_F(FindingWindowsTest, AHitIsNotTheLastRowInSight) {
    std::string keys = "[Panels]\r\nCategoryTargetSection=Configuration\r\n";
    for (int key = 0; key < 100; ++key) {
        keys += "K" + std::to_string(key) + "=1///\r\n";
    }
    world.disk.Put(SessionWorld::kWincmdData, keys);
    world.disk.Wait(10);
    Start();
    for (const auto& [name, lowest] : {std::pair("K50", 53), {"K98", 99}, {"K40", 43}, {"K1", 4}}) {
        world.session->Selection().SetSearchText(name);
        world.session->Selection().FindNextString();
        EXPECT_EQ(Rows()[static_cast<std::size_t>(SelectedRow())], name);
        const LRESULT top = Send(kIdListView1, LVM_GETTOPINDEX);
        EXPECT_LE(top, SelectedRow()) << name;
        EXPECT_GE(top + Send(kIdListView1, LVM_GETCOUNTPERPAGE), lowest + 1) << name;
    }
}

TEST_F(FindingWindowsTest, FavoritesAreAddedUnderACaption) {
    Start();
    Organize();
    EXPECT_FALSE(IsWindowEnabled(FavoriteList()));
    AddFavorite([] {});
    EXPECT_EQ(StoredFavorites(), "");
    AddFavorite([&] {
        const HWND box = In(IDC_FAVORITEADD_TEXT1);
        EXPECT_EQ(TextOf(box), "PanelsVertical");
        EXPECT_TRUE(IsSelected(box, 0, 14));
        EXPECT_FALSE(IsWindowEnabled(window->Handle()) || IsWindowEnabled(Organizer()));
        Type(IDC_FAVORITEADD_TEXT1, "");
        EXPECT_FALSE(IsOn(IDOK));
        Type(IDC_FAVORITEADD_TEXT1, "Panels \xC3\xBC");
        Click(IDOK);
    });
    EXPECT_EQ(world.OwnSetting("FavoritesList", "PanelsVertical"), "Panels \xC3\xBC");
    EXPECT_EQ(Favorites(), Strings{"[Panels \xC3\xBC]"});
    EXPECT_TRUE(IsWindowEnabled(Organizer()) && IsWindowEnabled(FavoriteList()));
}

TEST_F(FindingWindowsTest, TheOrganizerChangesTheFavorites) {
    OpenOrganizer("ShowHidden=Hidden\r\nBackColor=Back\r\nGone=Gone\r\n");
    EXPECT_EQ(GetFocus(), FavoriteList());
    EXPECT_FALSE(IsOn(IDC_ORGANIZE_CMDAPPLY));
    EXPECT_EQ(GreyFavorites(), "001");
    world.session->Selection().SelectCategory(1);
    EXPECT_EQ(GreyFavorites(), "011");
    world.session->Selection().SelectCategory(kRootNode);
    EXPECT_EQ(GreyFavorites(), "001");
    Click(IDC_ORGANIZE_CMDDOWN);
    EXPECT_TRUE(IsOn(IDC_ORGANIZE_CMDAPPLY));
    Click(IDC_ORGANIZE_CMDADDSEPARATOR);
    EXPECT_EQ(Favorites(), (Strings{"Back", "[-]", "Hidden", "Gone"}));

    SetFocus(In(IDC_ORGANIZE_CMDAPPLY));
    Click(IDC_ORGANIZE_CMDAPPLY);
    EXPECT_EQ(StoredFavorites(), "BackColor=Back\r\nSp_1=-\r\nShowHidden=Hidden\r\nGone=Gone\r\n");
    EXPECT_FALSE(IsOn(IDC_ORGANIZE_CMDAPPLY));
    EXPECT_EQ(GetFocus(), FavoriteList());

    // Definitions: a separator's is nowhere, which only the Enter key goes to see.
    Click(IDC_ORGANIZE_CMDDEFINITION);
    EXPECT_EQ(world.prompts.beeps, 1);
    SetFocus(FavoriteList());
    PressKey(VK_RETURN);
    EXPECT_EQ(world.prompts.messages, Strings{"XCannot find this favorite key!"});
    SendMessageW(FavoriteList(), WM_KEYDOWN, VK_DOWN, 0);
    Click(IDC_ORGANIZE_CMDDEFINITION);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));

    // Without rows only closing and applying are left.
    SetFocus(FavoriteList());
    for (int row = 0; row < 4; ++row) {
        PressKey(VK_DELETE);
    }
    EXPECT_EQ(Favorites(), Strings{});
    EXPECT_EQ(GetFocus(), In(IDC_ORGANIZE_CMDAPPLY));
    for (int id = IDC_ORGANIZE_CMDUP; id <= IDC_ORGANIZE_CMDADDSEPARATOR; ++id) {
        EXPECT_FALSE(IsOn(id)) << id;
    }
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_FALSE(world.session->FavoriteKeys().IsOrganizerOpen());
    Organize();
    EXPECT_EQ(Favorites().size(), 4U);
}

TEST_F(FindingWindowsTest, RowsOfTheOrganizerAreRenamed) {
    OpenOrganizer("ShowHidden=Hidden\r\nSp_1=-\r\n");
    const struct {
        const char* text;
        std::function<void()> end;
        Strings favorites;
    } steps[] = {
        {"Other", [] { PressKey(VK_ESCAPE); }, {"[Hidden]", "-"}},
        {"Key", [] { PressKey(VK_RETURN); }, {"[Key]", "-"}},
        // The button's key leaves the focus in the box until the button is pressed.
        {"Button",
         [&] { SendMessageW(dialog, WM_COMMAND, IDC_ORGANIZE_CMDDOWN, 0); },
         {"-", "[Button]"}},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.text);
        SetFocus(FavoriteList());
        PressKey(VK_F2);
        ASSERT_NE(LabelBox(), nullptr);
        SetWindowTextW(LabelBox(), Widen(step.text).c_str());
        step.end();
        EXPECT_EQ(LabelBox(), nullptr);
        ASSERT_TRUE(IsWindowVisible(dialog));
        EXPECT_EQ(Favorites(), step.favorites);
        EXPECT_EQ(IsOn(IDC_ORGANIZE_CMDAPPLY), step.favorites[0] != "[Hidden]");
    }
    SendMessageW(FavoriteList(), WM_KEYDOWN, VK_UP, 0);
    PressKey(VK_F2);
    EXPECT_EQ(LabelBox(), nullptr);
}

TEST_F(FindingWindowsTest, TheOrganizerKeepsItsPlace) {
    OpenOrganizer("ShowHidden=Hidden\r\n", "FavoriteWindowLeft=1500\r\nFavoriteWindowTop=750\r\n");
    const auto pixels = [](int twips) { return ToPixels(Twips{twips}, SystemDpi()).value; };
    RECT bounds = BoundsOf(dialog);
    EXPECT_EQ(bounds.left, pixels(1500));
    EXPECT_EQ(bounds.top, pixels(750));
    SetWindowPos(dialog, nullptr, 0, 0, 10, 500, SWP_NOMOVE | SWP_NOZORDER);
    bounds = BoundsOf(dialog);
    EXPECT_EQ(bounds.right - bounds.left, pixels(2760));  // its buttons need that much
    ExpectNoOverlaps(dialog);

    // With the main window it goes, to come again with it.
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(Organizer(), nullptr);
    EXPECT_EQ(
        OwnSettings({"FavoritesOroganizeVisible", "FavoriteWindowLeft", "FavoriteWindowHeight"}),
        (Strings{"1", "1500", std::to_string(ToTwips(Pixels{500}, SystemDpi()).value)}));
    Start();
    EXPECT_TRUE(Organizer() != nullptr && IsWindowVisible(Organizer()));
    EXPECT_EQ(GetFocus(), Find(kIdTreeView1));
}

}  // namespace
}  // namespace tamarind
