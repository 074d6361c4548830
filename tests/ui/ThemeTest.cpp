#include <gtest/gtest.h>
#include <oleacc.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "tests/ui/FakeLook.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/shell/ShellIds.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Palette.h"

namespace tamarind {
namespace {

// The main window with what Windows says of its own look.
class ThemeTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        SystemLook::Use(&system);
    }
    void TearDown() override {
        window.reset();
        SystemLook::Use(nullptr);
        UseTheme(Theme::Light);
    }
    COLORREF ListText() const {
        return static_cast<COLORREF>(Send(kIdTreeView1, TVM_GETTEXTCOLOR));
    }
    COLORREF ListBack() const { return static_cast<COLORREF>(Send(kIdListView1, LVM_GETBKCOLOR)); }

    LONG RowHeight() const { return SizeOf(PlaceOfRow(Find(kIdListView1), 1)).cy; }
    // Where everything that can be seen stands.
    static void AddPlaces(HWND shown, std::vector<RECT>& places) {
        if (IsWindowVisible(shown)) {
            places.push_back(BoundsOf(shown));
            for (const HWND child : ChildrenOf(shown)) {
                AddPlaces(child, places);
            }
        }
    }
    void ExpectSamePlaces(const std::vector<RECT>& places) const {
        std::vector<RECT> present;
        AddPlaces(Main(), present);
        ASSERT_EQ(present.size(), places.size());
        for (std::size_t at = 0; at < places.size(); ++at) {
            EXPECT_TRUE(EqualRect(&present[at], &places[at])) << at;
        }
    }

    FakeLook system;
};

// To a monitor of another resolution and back, to another size of texts and back, with as much
// open as can be.
TEST_F(ThemeTest, EverythingFitsAfterEachMoveAndIsAsBeforeInTheEnd) {
    PutManyKeys();
    PutOwnSettings("DescriptionPanelHeight=3000\r\nMainWindowWidth=12000\r\n");
    Start();
    Do(Command::FavoritesOrganize);
    Do(Command::SearchFind);
    world.session->Filter().SetText("k1");

    const RECT home = BoundsOf(Main());
    std::vector<RECT> places;
    AddPlaces(Main(), places);
    const LONG rowHeight = RowHeight();
    for (const int dpi : {144, 120, 192, 288}) {
        SCOPED_TRACE(dpi);
        SetDpi(dpi, {0, 0, 800 * dpi / 96, std::min(1200, 600 * dpi / 96)});
        ExpectNoOverlaps(Main());
        SetDpi(96, home);
        ExpectSamePlaces(places);
    }
    for (const int scale : {150, 225}) {
        SCOPED_TRACE(scale);
        system.textScale = scale;
        SendMessageW(Main(), WM_SETTINGCHANGE, 0, 0);
        ExpectNoOverlaps(Main());
        EXPECT_GE(RowHeight(), rowHeight * (scale - 20) / 100);
        system.textScale = 100;
        SendMessageW(Main(), WM_SETTINGCHANGE, 0, 0);
        ExpectSamePlaces(places);
    }
    // The box over a row follows it.
    world.session->Selection().GoToKey(90);
    Do(Command::EditValue);
    SetDpi(288, {0, 0, 1600, 1200});
    EXPECT_TRUE(IsWindowVisible(Find(kIdTxtInplaceEdit)));
    EXPECT_TRUE(IsInside(BoundsOf(Find(kIdTxtInplaceEdit)), BoundsOf(Find(kIdListView1))));
    system.textScale = 150;
    PutOwnSettings("FontSize=12\r\n");
    Start();
    EXPECT_EQ(FontHeightOf(Find(kIdListView1)), -16) << "the user has chosen it";
}

TEST_F(ThemeTest, TextsOfTheDarkPaletteCanBeRead) {
    UseTheme(Theme::Dark);
    for (const int text : {COLOR_WINDOWTEXT, COLOR_BTNTEXT, COLOR_GRAYTEXT, COLOR_HOTLIGHT,
                           COLOR_MENUTEXT, COLOR_INFOTEXT}) {
        for (const int back :
             {COLOR_WINDOW, COLOR_BTNFACE, COLOR_MENU, COLOR_3DLIGHT, COLOR_INFOBK}) {
            EXPECT_GE(ContrastOf(PaletteColor(text), PaletteColor(back)), 4.0)
                << text << " " << back;
            if (back != COLOR_3DLIGHT) {  // a button, which is no place for long texts
                EXPECT_GE(ContrastOf(PaletteColor(text), PaletteColor(back)), 4.5)
                    << text << " " << back;
            }
        }
    }
    for (const bool hasFocus : {false, true}) {
        EXPECT_GE(ContrastOf(SelectionTextColor(hasFocus), SelectionColor(hasFocus)), 4.5);
        EXPECT_GE(ContrastOf(SelectionColor(hasFocus), PaletteColor(COLOR_WINDOW)), 1.5)
            << "a selected row stands out";
    }
    const COLORREF back = PaletteColor(COLOR_WINDOW);
    const COLORREF text = PaletteColor(COLOR_WINDOWTEXT);
    EXPECT_EQ(ReadableColor(RGB(255, 160, 0), false, back, COLOR_WINDOWTEXT), RGB(255, 160, 0));
    EXPECT_EQ(ReadableColor(RGB(0, 0, 160), false, back, COLOR_WINDOWTEXT), text) << "too dark";
    EXPECT_EQ(ReadableColor(RGB(255, 160, 0), true, back, COLOR_WINDOWTEXT), text) << "not chosen";
    UseTheme(Theme::Light);
    EXPECT_EQ(ReadableColor(RGB(0, 0, 160), true, back, COLOR_WINDOWTEXT), RGB(0, 0, 160));
}

// The light theme keeps what is prescribed and chosen. What cannot be read well is told, not
// changed.
TEST_F(ThemeTest, ColorsOfTheLightThemeAreReported) {
    PutOwnSettings("ForegroundColor=8421504\r\nBackgroundColor=65535\r\n");
    Start();
    const struct {
        const char* name;
        COLORREF text, back;
        double least;
    } pairs[] = {
        {"active keys", RGB(0, 0, 255), GetSysColor(COLOR_WINDOW), 4.5},
        {"absent and commented keys", GetSysColor(COLOR_GRAYTEXT), GetSysColor(COLOR_WINDOW), 2},
        {"texts on the color of controls", GetSysColor(COLOR_WINDOWTEXT), kControlsBackColor, 4.5},
        {"gray on yellow, as chosen", ListText(), ListBack(), 2},
    };
    for (const auto& pair : pairs) {
        const double contrast = ContrastOf(pair.text, pair.back);
        std::printf("%s: %.1f to 1%s\n", pair.name, contrast, contrast < 4.5 ? ", low" : "");
        EXPECT_GE(contrast, pair.least) << pair.name;
    }
    EXPECT_EQ(ListText(), RGB(128, 128, 128)) << "the choice holds";
}

TEST_F(ThemeTest, EveryControlIsDarkAndLightAgain) {
    PutOwnSettings("Theme=2\r\nForegroundColor=128\r\nBackgroundColor=65535\r\n");
    Start();
    ExpectDark(Main());
    Press(kIdListView1, VK_DOWN);
    Press(kIdListView1, VK_F4);
    ExpectDark(Main());
    Press(kIdLstChoices, VK_ESCAPE);
    const auto visit = [this](const wchar_t* className, Command command) {
        Show(
            className, [this] { ExpectDark(dialog); }, [=, this] { Do(command); });
    };
    visit(L"frmSearchFor", Command::SearchFind);
    visit(L"frmFavoriteAdd", Command::FavoritesAdd);
    visit(L"frmAddKey", Command::EditAddKey);
    visit(L"frmPendingChanges", Command::FilePendingChanges);
    visit(L"frmAbout", Command::HelpAbout);
    Show(
        L"frmOptions",
        [this] {
            ExpectDark(dialog);
            SendMessageW(In(IDC_OPTIONS_CBOTHEME), CB_SETCURSEL, 1, 0);
            SendMessageW(GetParent(In(IDC_OPTIONS_CBOTHEME)), WM_COMMAND,
                         MAKEWPARAM(IDC_OPTIONS_CBOTHEME, CBN_SELCHANGE), 0);
            Click(IDC_OPTIONS_CMDAPPLY);
            EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY));
        },
        [this] { Do(Command::ViewOptions); });
    EXPECT_EQ(OwnSettings({"Theme"}), Strings{"1"});
    EXPECT_EQ(ListText(), RGB(128, 0, 0)) << "what the user chose holds again";
    EXPECT_EQ(ListBack(), RGB(255, 255, 0));
    EXPECT_GT(BrightShareOf(Find(kIdStatusBar1)), 0.5);
    EXPECT_GT(BrightShareOf(Find(kIdValueBar)), 0.5);
}

TEST_F(ThemeTest, FollowsWindowsAndHighContrast) {
    PutOwnSettings(
        "Theme=0\r\nForegroundColor=128\r\nBackgroundColor=65535\r\n"
        "ActiveKeyForeColor=65280\r\n");
    Start();
    EXPECT_EQ(ListBack(), RGB(255, 255, 0));
    system.prefersDark = true;
    SendMessageW(Main(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    EXPECT_EQ(ListBack(), PaletteColor(COLOR_WINDOW));
    EXPECT_NE(ListText(), RGB(128, 0, 0)) << "not to be read on a dark background";
    ExpectDark(Main());
    system.hasHighContrast = true;
    SendMessageW(Main(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_FALSE(IsDark());
    EXPECT_EQ(ListBack(), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(ListText(), GetSysColor(COLOR_WINDOWTEXT));
    system = {};
    SendMessageW(Main(), WM_SETTINGCHANGE, 0, 0);
    EXPECT_EQ(ListBack(), RGB(255, 255, 0));
    EXPECT_EQ(ListText(), RGB(128, 0, 0));
}

// Entries that are drawn here keep their texts, which screen readers ask for, and access keys.
TEST_F(ThemeTest, DarkMenusKeepTheirTextsAndKeys) {
    PutOwnSettings("Theme=2\r\n");
    Start();
    const HMENU view = GetSubMenu(GetMenu(Main()), 2);
    SendMessageW(Main(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(view), 2);
    wchar_t text[100] = L"";
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING | MIIM_FTYPE | MIIM_DATA;
    info.dwTypeData = text;
    info.cch = ARRAYSIZE(text);
    ASSERT_TRUE(GetMenuItemInfoW(view, 0, TRUE, &info));
    EXPECT_NE(info.fType & MFT_OWNERDRAW, 0U);
    EXPECT_STREQ(text, L"&Toolbar");
    const auto* const told = reinterpret_cast<const MSAAMENUINFO*>(info.dwItemData);
    EXPECT_EQ(told->dwMSAASignature, static_cast<DWORD>(MSAA_MENU_SIG));
    EXPECT_STREQ(told->pszWText, L"&Toolbar");
    const auto key = [&](wchar_t letter) {
        return SendMessageW(Main(), WM_MENUCHAR, MAKEWPARAM(letter, MF_POPUP),
                            reinterpret_cast<LPARAM>(view));
    };
    EXPECT_EQ(key(L'T'), MAKELRESULT(0, MNC_EXECUTE));
    EXPECT_EQ(key(L'd'), MAKELRESULT(1, MNC_EXECUTE));
    EXPECT_EQ(HIWORD(key(L'7')), MNC_IGNORE);
}

}  // namespace
}  // namespace tamarind
