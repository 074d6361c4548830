#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/favorites/FavoritesIds.h"
#include "ui/search/SearchIds.h"
#include "ui/search/frmSearchFor.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Timer.h"

namespace tamarind {
namespace {

// The windows that the Search and Favorites menus open, through the main window.
class FindingWindowsTest : public MainWindowTest {
protected:
    static HWND Window(const wchar_t* name) { return FindWindowW(name, nullptr); }
    HWND Search() const { return Window(L"frmSearchFor"); }
    HWND Organizer() const { return Window(L"frmOrganizeFavorites"); }

    static bool IsOn(HWND dialog, int id) { return IsWindowEnabled(GetDlgItem(dialog, id)); }
    static bool IsChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) != 0; }
    static void Click(HWND dialog, int id) { SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0); }
    static void Type(HWND dialog, int id, const char* text) {
        SetWindowTextW(GetDlgItem(dialog, id), Widen(text).c_str());
    }
    static std::string TextIn(HWND dialog, int id) { return TextOf(GetDlgItem(dialog, id)); }
    // As the main loop treats a key for the window with the focus. It handles nothing else: the
    // window manager might take the focus meanwhile.
    static void PressKey(WPARAM key) {
        MSG message{};
        message.hwnd = GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        message.lParam = 1;
        if (!Dialog::TranslateDialogMessage(message)) {
            DispatchMessageW(&message);
        }
    }
    static void PressCloseBox(HWND dialog) {
        SendMessageW(dialog, WM_CLOSE, 0, 0);
        MSG message{};
        while (PeekMessageW(&message, dialog, WM_COMMAND, WM_COMMAND, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    static std::pair<DWORD, DWORD> SelectionIn(HWND box) {
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                     reinterpret_cast<LPARAM>(&end));
        return {start, end};
    }

    HWND FavoriteList() const { return GetDlgItem(Organizer(), IDC_ORGANIZE_LISTVIEW1); }
    HWND LabelBox() const {
        return reinterpret_cast<HWND>(SendMessageW(FavoriteList(), LVM_GETEDITCONTROL, 0, 0));
    }
    // What the organizer's list shows, the selected row in brackets.
    Strings Favorites() const {
        Strings texts;
        const HWND list = FavoriteList();
        const auto count = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
        for (int row = 0; row < count; ++row) {
            wchar_t text[100] = L"";
            LVITEMW item{};
            item.pszText = text;
            item.cchTextMax = ARRAYSIZE(text);
            SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&item));
            const bool isSelected =
                SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
            texts.push_back(isSelected ? "[" + Narrow(item.pszText) + "]" : Narrow(item.pszText));
        }
        return texts;
    }
    std::string StoredFavorites() const {
        const std::string file = world.disk.BytesOf(SessionWorld::kOwnSettings);
        const std::size_t start = file.find("[FavoritesList]\r\n");
        return start == std::string::npos ? "" : file.substr(start + 17);
    }
    void OpenOrganizer(const std::string& favorites, const std::string& settings = "") {
        PutOwnSettings(settings + "[FavoritesList]\r\n" + favorites);
        Start();
        Command(tamarind::Command::FavoritesOrganize);
        ASSERT_TRUE(IsWindowVisible(Organizer()));
    }

    // Adds the current key to the favorites; `answer` deals with the window that asks for more.
    void AddFavorite(const std::function<void(HWND)>& answer) const {
        bool isDone = false;
        Timer timer([&] {
            const HWND asking = Window(L"frmFavoriteAdd");
            if (IsWindowVisible(asking) && !isDone) {
                isDone = true;
                answer(asking);
            }
        });
        timer.Start(window->Handle(), 10);
        Command(tamarind::Command::FavoritesAdd);
        EXPECT_TRUE(isDone);
    }
};

TEST_F(FindingWindowsTest, TheSearchWindowFindsAndKeepsItsSettings) {
    Start();
    Command(tamarind::Command::SearchFind);
    const HWND search = Search();
    ASSERT_TRUE(IsWindowVisible(search));
    const HWND box = GetDlgItem(search, IDC_SEARCHFOR_TXTFIND);
    EXPECT_EQ(TextOf(search), "Find");
    EXPECT_EQ(TextIn(search, IDC_SEARCHFOR_CMDFINDNEXT), "Find &Next");
    EXPECT_EQ(GetFocus(), box);
    EXPECT_TRUE(IsChecked(search, IDC_SEARCHFOR_OPTKEYNAME));
    EXPECT_FALSE(IsOn(search, IDC_SEARCHFOR_CMDFINDNEXT));
    EXPECT_FALSE(world.session->IsEnabled(tamarind::Command::SearchFindNext));

    Type(search, IDC_SEARCHFOR_TXTFIND, "SHOW");
    EXPECT_TRUE(IsOn(search, IDC_SEARCHFOR_CMDFINDNEXT));
    EXPECT_TRUE(world.session->IsEnabled(tamarind::Command::SearchFindNext));
    PressKey(VK_RETURN);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(GetFocus(), box);
    Command(tamarind::Command::SearchFindNext);
    EXPECT_EQ(world.prompts.messages, Strings{"iCannot find \"SHOW\""});

    // A word of a description, which the box then shows.
    Type(search, IDC_SEARCHFOR_TXTFIND, "side");
    Click(search, IDC_SEARCHFOR_OPTKEYDESCRIPTION);
    Click(search, IDC_SEARCHFOR_CHKWHOLEWORD);
    Click(search, IDC_SEARCHFOR_CMDFINDNEXT);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(SelectionIn(Find(kIdTxtDescriptionBox)), std::make_pair(DWORD{21}, DWORD{25}));

    for (const UINT closing : {UINT{WM_KEYDOWN}, UINT{WM_CLOSE}}) {
        SetFocus(GetDlgItem(search, IDCANCEL));
        closing == WM_CLOSE ? PressCloseBox(search) : PressKey(VK_ESCAPE);
        ASSERT_TRUE(IsWindow(search));
        EXPECT_FALSE(IsWindowVisible(search));
        Command(tamarind::Command::SearchFind);
        EXPECT_TRUE(IsWindowVisible(search));
        EXPECT_EQ(GetFocus(), box);
        EXPECT_EQ(SelectionIn(box), std::make_pair(DWORD{0}, DWORD{4}));
        EXPECT_TRUE(IsChecked(search, IDC_SEARCHFOR_OPTKEYDESCRIPTION));
    }
    Click(search, IDC_SEARCHFOR_CMDFINDNEXT);  // from the first key again
    EXPECT_EQ(world.prompts.messages.size(), 1U);
    window.reset();
    EXPECT_EQ(Search(), nullptr);
}

TEST_F(FindingWindowsTest, FavoritesAreAddedUnderACaption) {
    Start();
    Command(tamarind::Command::FavoritesOrganize);
    EXPECT_FALSE(IsWindowEnabled(FavoriteList()));
    EXPECT_FALSE(IsOn(Organizer(), IDC_ORGANIZE_CMDADDSEPARATOR));

    AddFavorite([](HWND asking) { SendMessageW(asking, WM_CLOSE, 0, 0); });
    EXPECT_EQ(StoredFavorites(), "");
    const RECT main = BoundsOf(window->Handle());
    AddFavorite([&](HWND asking) {
        EXPECT_EQ(TextIn(asking, IDC_FAVORITEADD_TEXT1), "PanelsVertical");
        EXPECT_EQ(SelectionIn(GetDlgItem(asking, IDC_FAVORITEADD_TEXT1)),
                  std::make_pair(DWORD{0}, DWORD{14}));
        const int dpi = WindowDpi(window->Handle());
        EXPECT_EQ(BoundsOf(asking).left, main.left + ToPixels(Twips{1400}, dpi).value);
        EXPECT_EQ(BoundsOf(asking).top, main.top + ToPixels(Twips{1800}, dpi).value);
        EXPECT_FALSE(IsWindowEnabled(window->Handle()));
        EXPECT_FALSE(IsWindowEnabled(Organizer()));
        Type(asking, IDC_FAVORITEADD_TEXT1, "");
        EXPECT_FALSE(IsOn(asking, IDOK));
        Type(asking, IDC_FAVORITEADD_TEXT1, "Panels \xC3\xBC");
        EXPECT_TRUE(IsOn(asking, IDOK));
        Click(asking, IDOK);
    });
    EXPECT_EQ(world.OwnSetting("FavoritesList", "PanelsVertical"), "Panels \xC3\xBC");
    EXPECT_TRUE(IsWindowEnabled(Organizer()));
    EXPECT_EQ(Favorites(), Strings{"[Panels \xC3\xBC]"});
    EXPECT_TRUE(IsWindowEnabled(FavoriteList()));
    EXPECT_FALSE(IsOn(Organizer(), IDC_ORGANIZE_CMDAPPLY));
}

TEST_F(FindingWindowsTest, TheOrganizerChangesTheFavorites) {
    OpenOrganizer("ShowHidden=Hidden\r\nBackColor=Back\r\nGone=Gone\r\n");
    const HWND organizer = Organizer();
    EXPECT_EQ(GetFocus(), FavoriteList());
    EXPECT_EQ(Favorites(), (Strings{"[Hidden]", "Back", "Gone"}));
    EXPECT_FALSE(IsOn(organizer, IDC_ORGANIZE_CMDAPPLY));
    Click(organizer, IDC_ORGANIZE_CMDUP);
    EXPECT_FALSE(IsOn(organizer, IDC_ORGANIZE_CMDAPPLY));
    Click(organizer, IDC_ORGANIZE_CMDDOWN);
    EXPECT_EQ(Favorites(), (Strings{"Back", "[Hidden]", "Gone"}));
    EXPECT_TRUE(IsOn(organizer, IDC_ORGANIZE_CMDAPPLY));
    Click(organizer, IDC_ORGANIZE_CMDADDSEPARATOR);
    EXPECT_EQ(Favorites(), (Strings{"Back", "[-]", "Hidden", "Gone"}));

    SetFocus(GetDlgItem(organizer, IDC_ORGANIZE_CMDAPPLY));
    Click(organizer, IDC_ORGANIZE_CMDAPPLY);
    EXPECT_EQ(StoredFavorites(), "BackColor=Back\r\nSp_1=-\r\nShowHidden=Hidden\r\nGone=Gone\r\n");
    EXPECT_FALSE(IsOn(organizer, IDC_ORGANIZE_CMDAPPLY));
    EXPECT_EQ(GetFocus(), FavoriteList());

    // Definitions: a separator's is nowhere, which only the Enter key goes to see.
    Click(organizer, IDC_ORGANIZE_CMDDEFINITION);
    EXPECT_EQ(world.prompts.beeps, 1);
    SetFocus(FavoriteList());
    PressKey(VK_RETURN);
    EXPECT_EQ(world.prompts.messages, Strings{"XCannot find this favorite key!"});
    SendMessageW(FavoriteList(), WM_KEYDOWN, VK_DOWN, 0);
    Click(organizer, IDC_ORGANIZE_CMDDEFINITION);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(GetFocus(), Find(kIdListView1));

    // Without rows only closing and applying are left.
    SetFocus(FavoriteList());
    for (int row = 0; row < 4; ++row) {
        PressKey(VK_DELETE);
    }
    EXPECT_EQ(Favorites(), Strings{});
    EXPECT_EQ(GetFocus(), GetDlgItem(organizer, IDC_ORGANIZE_CMDAPPLY));
    for (int id = IDC_ORGANIZE_CMDUP; id <= IDC_ORGANIZE_CMDADDSEPARATOR; ++id) {
        EXPECT_FALSE(IsOn(organizer, id)) << id;
    }
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(IsWindow(organizer));
    EXPECT_FALSE(world.session->IsOrganizerOpen());
    Command(tamarind::Command::FavoritesOrganize);
    EXPECT_EQ(Favorites().size(), 4U);
}

TEST_F(FindingWindowsTest, RowsOfTheOrganizerAreRenamed) {
    OpenOrganizer("ShowHidden=Hidden\r\nSp_1=-\r\n");
    PressKey(VK_F2);
    ASSERT_NE(LabelBox(), nullptr);
    SetWindowTextW(LabelBox(), L"Other");
    PressKey(VK_ESCAPE);
    EXPECT_EQ(LabelBox(), nullptr);
    ASSERT_TRUE(IsWindowVisible(Organizer()));
    EXPECT_EQ(Favorites(), (Strings{"[Hidden]", "-"}));

    for (const bool entersByKey : {true, false}) {
        const char* const text = entersByKey ? "Key" : "Button";
        SetFocus(FavoriteList());
        PressKey(VK_F2);
        ASSERT_NE(LabelBox(), nullptr);
        SetWindowTextW(LabelBox(), Widen(text).c_str());
        if (entersByKey) {
            PressKey(VK_RETURN);
            EXPECT_EQ(Favorites(), (Strings{"[Key]", "-"}));
        } else {
            // Its key leaves the focus in the box until the button is pressed.
            SendMessageW(Organizer(), WM_COMMAND, IDC_ORGANIZE_CMDDOWN, 0);
            EXPECT_EQ(Favorites(), (Strings{"-", "[Button]"}));
        }
        EXPECT_EQ(LabelBox(), nullptr);
        EXPECT_TRUE(IsOn(Organizer(), IDC_ORGANIZE_CMDAPPLY));
    }
    SendMessageW(FavoriteList(), WM_KEYDOWN, VK_UP, 0);
    PressKey(VK_F2);
    EXPECT_EQ(LabelBox(), nullptr);
}

TEST_F(FindingWindowsTest, TheOrganizerKeepsItsPlace) {
    const int dpi = SystemDpi();
    const auto pixels = [&](int twips) { return ToPixels(Twips{twips}, dpi).value; };
    OpenOrganizer("ShowHidden=Hidden\r\n", "FavoriteWindowLeft=1500\r\nFavoriteWindowTop=750\r\n");
    RECT at = BoundsOf(Organizer());
    EXPECT_EQ(at.left, pixels(1500));
    EXPECT_EQ(at.top, pixels(750));
    EXPECT_EQ(at.right - at.left, pixels(2760));  // more than is stored
    EXPECT_EQ(at.bottom - at.top, pixels(7020));

    SetWindowPos(Organizer(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    at = BoundsOf(Organizer());
    EXPECT_EQ(at.right - at.left, pixels(2760));
    EXPECT_EQ(at.bottom - at.top, pixels(4000));
    SetWindowPos(Organizer(), nullptr, 0, 0, 500, 600, SWP_NOMOVE | SWP_NOZORDER);
    RECT inner{};
    GetClientRect(Organizer(), &inner);
    const RECT list = BoundsOf(FavoriteList());
    const HWND frame = GetDlgItem(Organizer(), IDC_ORGANIZE_FRAME1);
    EXPECT_EQ(list.right - list.left, inner.right - 2 * ScaledPixels(1, dpi));
    EXPECT_EQ(list.bottom - list.top, inner.bottom - HeightOf(frame) - 2 * ScaledPixels(2, dpi));
    POINT corner{inner.right, inner.bottom};
    ClientToScreen(Organizer(), &corner);
    EXPECT_EQ(BoundsOf(frame).bottom, corner.y);
    EXPECT_EQ(SendMessageW(FavoriteList(), LVM_GETCOLUMNWIDTH, 0, 0),
              list.right - list.left - pixels(400));

    // With the main window it goes, to come again with it.
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(Organizer(), nullptr);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoritesOroganizeVisible"), "1");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoriteWindowLeft"), "1500");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoriteWindowWidth"),
              std::to_string(ToTwips(Pixels{500}, dpi).value));
}

// The dialog's parts as a language shows them.
TEST_F(FindingWindowsTest, DialogsFitTheirTextsInBothDirections) {
    Start();
    DialogLanguage language;
    const std::wstring text = L"&Twice the usual length of a text";
    language.text = [&](std::uint16_t) { return text; };
    LONG usualWidth = 0;
    for (const bool isRightToLeft : {false, true}) {
        SCOPED_TRACE(isRightToLeft);
        language.isRightToLeft = isRightToLeft;
        frmSearchFor dialog(*world.session, language);
        dialog.Open(window->Handle());
        const HWND handle = dialog.Handle();
        const ScreenDC dc;
        const SelectedObject font(dc.Get(),
                                  reinterpret_cast<HFONT>(SendMessageW(handle, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32W(dc.Get(), text.c_str() + 1, static_cast<int>(text.size()) - 1, &size);
        RECT area{};
        GetClientRect(handle, &area);
        MapWindowPoints(handle, nullptr, reinterpret_cast<POINT*>(&area), 2);
        for (HWND child = GetWindow(handle, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const RECT at = BoundsOf(child);
            EXPECT_GE(at.left, area.left);
            EXPECT_LE(at.right, area.right);
            if (GetDlgCtrlID(child) != IDC_SEARCHFOR_TXTFIND) {
                EXPECT_GE(at.right - at.left, size.cx) << GetDlgCtrlID(child);
            }
        }
        const RECT button = BoundsOf(GetDlgItem(handle, IDC_SEARCHFOR_CMDFINDNEXT));
        const RECT box = BoundsOf(GetDlgItem(handle, IDC_SEARCHFOR_TXTFIND));
        EXPECT_EQ(button.left < box.left, isRightToLeft);

        // Back to short texts and the usual direction, without being made anew.
        language.text = [](std::uint16_t) { return std::wstring(L"x"); };
        language.isRightToLeft = false;
        dialog.ApplyLanguage();
        const RECT bounds = BoundsOf(handle);
        EXPECT_LT(bounds.right - bounds.left, area.right - area.left);
        EXPECT_LT(BoundsOf(GetDlgItem(handle, IDC_SEARCHFOR_TXTFIND)).right,
                  BoundsOf(GetDlgItem(handle, IDC_SEARCHFOR_CMDFINDNEXT)).left);
        EXPECT_TRUE(usualWidth == 0 || usualWidth == bounds.right - bounds.left);
        usualWidth = bounds.right - bounds.left;
        language.text = [&](std::uint16_t) { return text; };
    }
}

}  // namespace
}  // namespace tamarind
