#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "ui/favorites/FavoritesIds.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

// The windows that the Favorites menu opens, through the main window.
class FavoritesWindowsTest : public MainWindowTest {
protected:
    static HWND Organizer() { return FindWindowW(L"frmOrganizeFavorites", nullptr); }
    static HWND FavoriteList() { return GetDlgItem(Organizer(), IDC_ORGANIZE_LISTVIEW1); }
    static HWND LabelBox() { return ListView_GetEditControl(FavoriteList()); }
    // What the organizer's list shows, gray rows as "(text)" and the selected one as "[text]".
    static Strings Favorites() {
        Strings texts = RowsIn(FavoriteList());
        for (int row = 0; std::string & text : texts) {
            NMLVCUSTOMDRAW draw{};
            draw.nmcd.hdr = {FavoriteList(), IDC_ORGANIZE_LISTVIEW1, NM_CUSTOMDRAW};
            draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
            draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
            SendMessageW(Organizer(), WM_NOTIFY, IDC_ORGANIZE_LISTVIEW1,
                         reinterpret_cast<LPARAM>(&draw));
            text = draw.clrText == GetSysColor(COLOR_GRAYTEXT) ? "(" + text + ")" : text;
            text = row++ == SelectedIn(FavoriteList()) ? "[" + text + "]" : text;
        }
        return texts;
    }
    void OpenOrganizer(const std::string& favorites, const std::string& settings = "") {
        PutOwnSettings(settings + "[FavoritesList]\r\n" + favorites);
        Start();
        Organize();
        ASSERT_TRUE(IsWindowVisible(dialog));
    }
    void Organize() {
        Do(Command::FavoritesOrganize);
        dialog = Organizer();
    }
};

TEST_F(FavoritesWindowsTest, FavoritesAreAddedUnderACaption) {
    Start();
    Organize();
    EXPECT_FALSE(IsWindowEnabled(FavoriteList()));
    const auto cancel = [&] { Click(IDCANCEL); };
    const auto add = [&] { Do(Command::FavoritesAdd); };
    Show(L"frmFavoriteAdd", cancel, add);
    EXPECT_EQ(world.OwnSetting("FavoritesList", "PanelsVertical"), "(none)");
    const auto act = [&] {
        const HWND box = In(IDC_FAVORITEADD_TEXT1);
        EXPECT_EQ(TextOf(box), "PanelsVertical");
        EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(0, 14));
        EXPECT_FALSE(IsWindowEnabled(Main()) || IsWindowEnabled(Organizer()));
        SetWindowTextW(box, L"");
        EXPECT_FALSE(IsOn(IDOK));
        SetWindowTextW(box, L"Panels \x00FC");
        Click(IDOK);
    };
    Show(L"frmFavoriteAdd", act, add);
    EXPECT_EQ(world.OwnSetting("FavoritesList", "PanelsVertical"), "Panels \xC3\xBC");
    EXPECT_EQ(Favorites(), Strings{"[Panels \xC3\xBC]"});
    EXPECT_TRUE(IsWindowEnabled(Organizer()) && IsWindowEnabled(FavoriteList()));
}

TEST_F(FavoritesWindowsTest, TheOrganizerChangesTheFavorites) {
    OpenOrganizer("ShowHidden=Hidden\r\nBackColor=Back\r\nGone=Gone\r\n");
    EXPECT_EQ(GetFocus(), FavoriteList());
    EXPECT_FALSE(IsOn(IDC_ORGANIZE_CMDAPPLY));
    EXPECT_EQ(Favorites(), (Strings{"[Hidden]", "Back", "(Gone)"}));
    Click(IDC_ORGANIZE_CMDDOWN);
    Click(IDC_ORGANIZE_CMDADDSEPARATOR);
    EXPECT_EQ(Favorites(), (Strings{"Back", "[(-)]", "Hidden", "(Gone)"}));

    SetFocus(In(IDC_ORGANIZE_CMDAPPLY));
    Click(IDC_ORGANIZE_CMDAPPLY);
    EXPECT_EQ(world.OwnSetting("FavoritesList", "Sp_1"), "-");
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

TEST_F(FavoritesWindowsTest, RowsOfTheOrganizerAreRenamed) {
    OpenOrganizer("ShowHidden=Hidden\r\nSp_1=-\r\n");
    const auto type = [&](const wchar_t* text) {
        SetFocus(FavoriteList());
        PressKey(VK_F2);
        ASSERT_NE(LabelBox(), nullptr);
        SetWindowTextW(LabelBox(), text);
    };
    for (const WPARAM key : {VK_ESCAPE, VK_RETURN}) {
        type(L"Key");
        PressKey(key);
        EXPECT_EQ(LabelBox(), nullptr);
        EXPECT_EQ(Favorites()[0], key == VK_RETURN ? "[Key]" : "[Hidden]");
        EXPECT_EQ(IsOn(IDC_ORGANIZE_CMDAPPLY), key == VK_RETURN);
    }
    type(L"Button");
    // The button's key leaves the focus in the box until the button is pressed.
    SendMessageW(dialog, WM_COMMAND, IDC_ORGANIZE_CMDDOWN, 0);
    EXPECT_EQ(LabelBox(), nullptr);
    EXPECT_EQ(Favorites(), (Strings{"(-)", "[Button]"}));
    SendMessageW(FavoriteList(), WM_KEYDOWN, VK_UP, 0);
    PressKey(VK_F2);
    EXPECT_EQ(LabelBox(), nullptr);
}

TEST_F(FavoritesWindowsTest, TheOrganizerKeepsItsPlace) {
    OpenOrganizer("ShowHidden=Hidden\r\n", "FavoriteWindowLeft=1500\r\nFavoriteWindowTop=750\r\n");
    const auto pixels = [](int twips) { return ToPixels(Twips{twips}, SystemDpi()).value; };
    EXPECT_EQ(BoundsOf(dialog).left, pixels(1500));
    EXPECT_EQ(BoundsOf(dialog).top, pixels(750));
    Resize(dialog, 10, 500);
    EXPECT_EQ(WidthOf(dialog), pixels(2760));  // its buttons need that much
    ExpectNoOverlaps(dialog);

    // With the main window it goes, to come again with it.
    SendMessageW(Main(), WM_CLOSE, 0, 0);
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
