#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/ui/MainWindowFixture.h"
#include "ui/shell/ShellIds.h"
#include "ui/shell/WindowPrompts.h"
#include "ui/shell/frmAbout.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/ScopeExit.h"
#include "ui/toolkit/Timer.h"

namespace tamarind {
namespace {

constexpr int kFlagBoxes[] = {IDC_OPTIONS_CHKSHOWGRIDLINES, IDC_OPTIONS_CHKFLATUSERINTERFACE,
                              IDC_OPTIONS_CHKFIXEDBORDERS, IDC_OPTIONS_CHKALWAYSRESTARTTC,
                              IDC_OPTIONS_CHKAUTOSELECTNEXTKEY};
constexpr const char* kFlagKeys[] = {"CommandListShowLines", "FlatUserInterface", "FixedBorders",
                                     "AlwaysRestartTC", "AutoSelectNextKey"};
constexpr const char* kLanguageFile = "C:\\Tamarind\\Languages\\Other.lng";

// The dialogs of the View and Help menus, over the main window.
class OptionsWindowTest : public MainWindowTest {
protected:
    void ShowOptions(const std::function<void()>& actions) {
        Show(
            L"frmOptions", [&] { Command(tamarind::Command::ViewOptions); }, actions);
    }
    HWND In(int id) const { return FindIn(dialog, id); }
    bool IsOn(int id) const { return IsWindowEnabled(In(id)); }
    bool IsChecked(int id) const { return SendMessageW(In(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void Click(int id) const { SendMessageW(In(id), BM_CLICK, 0, 0); }
    void Focus(int id) const {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(In(id)), TRUE);
    }
    // As the dialog's loop treats a key for the control with the focus.
    static void PressKey(WPARAM key, UINT kind = WM_KEYDOWN) {
        MSG message{};
        message.hwnd = GetFocus();
        message.message = kind;
        message.wParam = key;
        message.lParam = 1;
        if (!Dialog::TranslateDialogMessage(message)) {
            DispatchMessageW(&message);
        }
    }
    static void PressWithControl(WPARAM key, bool withShift = false) {
        BYTE before[256];
        GetKeyboardState(before);
        const ScopeExit release([&] { SetKeyboardState(before); });
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        keys[VK_SHIFT] = withShift ? 0x80 : 0;
        SetKeyboardState(keys);
        PressKey(key);
    }
    // The number of the panel that can be seen and used; 0, after a failure, unless it is one.
    int Panel() const {
        int panel = 0;
        int count = 0;
        for (const auto& [id, number] :
             {std::pair(IDC_OPTIONS_CMDCHANGEFONT, 1), std::pair(IDC_OPTIONS_CHKALWAYSRESTARTTC, 2),
              std::pair(IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE, 3)}) {
            const HWND parent = GetParent(In(id));
            EXPECT_EQ(IsWindowVisible(parent), IsWindowEnabled(parent));
            if (IsWindowVisible(parent)) {
                panel = number;
                ++count;
            }
        }
        EXPECT_EQ(count, 1);
        return count == 1 ? panel : 0;
    }
    // In the middle of a control.
    COLORREF ColorOf(int id) const {
        RedrawWindow(In(id), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        RECT area{};
        GetClientRect(In(id), &area);
        const ScreenDC dc(In(id));
        return GetPixel(dc.Get(), static_cast<int>(area.right / 2),
                        static_cast<int>(area.bottom / 2));
    }
    std::string Setting(const char* key) { return world.OwnSetting("ConfigurationEditor", key); }
};

TEST_F(OptionsWindowTest, ShowsTheSettings) {
    for (const bool isEven : {false, true}) {
        SCOPED_TRACE(isEven);
        std::string lines;
        for (std::size_t at = 0; at < std::size(kFlagKeys); ++at) {
            lines += std::string(kFlagKeys[at]) + ((at % 2 == 0) == isEven ? "=1" : "=0") + "\r\n";
        }
        PutOwnSettings(lines + (isEven
                                    ? "ForegroundColor=255\r\nBackgroundColor=65535\r\n"
                                      "ActiveKeyForeColor=16711680\r\n"
                                      "UseDefaultLanguage=1\r\n[Common]\r\nLanguageFile=a.lng\r\n"
                                    : "BackgroundColor=-2147483643\r\n"));
        Start();
        ShowOptions([&] {
            EXPECT_EQ(TextOf(dialog), "Options");
            EXPECT_EQ(TextOf(In(IDC_OPTIONS_LBLCOLORCHANGE2)), "Active Key");
            EXPECT_FALSE(IsWindowEnabled(window->Handle()));
            EXPECT_EQ(Panel(), 1);
            for (std::size_t at = 0; at < std::size(kFlagBoxes); ++at) {
                EXPECT_EQ(IsChecked(kFlagBoxes[at]), (at % 2 == 0) == isEven) << kFlagKeys[at];
            }
            EXPECT_EQ(TextOf(In(IDC_OPTIONS_TXTLANGUAGEFILEPATH)), isEven ? "a.lng" : "");
            EXPECT_TRUE(IsChecked(IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE));
            EXPECT_FALSE(IsChecked(IDC_OPTIONS_OPTUSEOTHELANGUAGE));
            EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE1),
                      isEven ? RGB(255, 255, 0) : GetSysColor(COLOR_WINDOW));
            if (isEven) {
                EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE0), RGB(255, 0, 0));
                EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE2), RGB(0, 0, 255));
            }
            EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY));
        });
    }
}

TEST_F(OptionsWindowTest, ChangesReachTheSettingsByApplyAndOkOnly) {
    world.disk.Put(kLanguageFile, "[UserLanguage]\r\n1001=Einstellungen\r\n");
    PutOwnSettings("FixedBorders=0\r\nFontSize=10\r\n");
    Start();
    const std::string before = world.disk.BytesOf(SessionWorld::kOwnSettings);
    for (const bool isCancelled : {true, false}) {
        ShowOptions([&] {
            // What changes nothing: an option that is set, and choosers that are cancelled.
            for (const int id : {IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE, IDC_OPTIONS_LBLCOLORCHANGE1,
                                 IDC_OPTIONS_CMDCHANGEFONT}) {
                Click(id);
                EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY)) << id;
            }
            world.prompts.colorsToChoose = {"1", "2", "3"};
            world.prompts.fontsToChoose = {{"Arial", 12, 1, 204}};
            for (const int id : {IDC_OPTIONS_CHKSHOWGRIDLINES, IDC_OPTIONS_CHKFLATUSERINTERFACE,
                                 IDC_OPTIONS_CHKFIXEDBORDERS, IDC_OPTIONS_CHKALWAYSRESTARTTC,
                                 IDC_OPTIONS_CHKAUTOSELECTNEXTKEY, IDC_OPTIONS_LBLCOLORCHANGE0,
                                 IDC_OPTIONS_LBLCOLORCHANGE1, IDC_OPTIONS_LBLCOLORCHANGE2,
                                 IDC_OPTIONS_CMDCHANGEFONT, IDC_OPTIONS_OPTUSEOTHELANGUAGE}) {
                EXPECT_TRUE(isCancelled || !IsOn(IDC_OPTIONS_CMDAPPLY)) << id;
                Click(id);
                EXPECT_TRUE(IsOn(IDC_OPTIONS_CMDAPPLY)) << id;
                if (!isCancelled) {
                    Click(IDC_OPTIONS_CMDAPPLY);
                }
            }
            EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE1), 2U);
            SetWindowTextW(In(IDC_OPTIONS_TXTLANGUAGEFILEPATH), L"a");
            EXPECT_TRUE(IsOn(IDC_OPTIONS_CMDAPPLY));
            world.prompts.filesToChoose = {kLanguageFile};
            Click(IDC_OPTIONS_CMDBROWSEFORLANGFILE);
            Click(isCancelled ? IDCANCEL : IDOK);
        });
        if (isCancelled) {
            EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);
        }
    }
    for (const char* const key : kFlagKeys) {
        EXPECT_EQ(Setting(key), "1") << key;
    }
    EXPECT_EQ(Setting("ForegroundColor"), "1");
    EXPECT_EQ(Setting("BackgroundColor"), "2");
    EXPECT_EQ(Setting("ActiveKeyForeColor"), "3");
    EXPECT_EQ(Setting("FontName"), "Arial");
    EXPECT_EQ(Setting("UseDefaultLanguage"), "0");
    EXPECT_EQ(world.OwnSetting("Common", "LanguageFile"), kLanguageFile);
    ShowOptions([&] {
        EXPECT_EQ(TextOf(dialog), "Einstellungen");
        EXPECT_EQ(TextOf(In(IDC_OPTIONS_TXTLANGUAGEFILEPATH)), kLanguageFile);
        EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY));
    });
}

TEST_F(OptionsWindowTest, TabsAreSwitchedByTheKeyboard) {
    Start();
    ShowOptions([&] {
        const HWND strip = In(IDC_OPTIONS_TBSOPTIONS);
        const auto panelOfFocus = [] { return GetParent(GetFocus()); };
        Focus(IDC_OPTIONS_CMDCHANGEFONT);
        PressWithControl(VK_TAB);
        EXPECT_EQ(Panel(), 2);
        EXPECT_EQ(GetFocus(), In(IDC_OPTIONS_CHKALWAYSRESTARTTC));
        PressWithControl(VK_TAB, true);
        PressWithControl(VK_TAB, true);
        EXPECT_EQ(Panel(), 3);
        EXPECT_EQ(panelOfFocus(), GetParent(In(IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE)));
        PressWithControl(VK_NEXT);
        EXPECT_EQ(Panel(), 1);

        Focus(IDC_OPTIONS_TBSOPTIONS);
        PressKey(VK_RIGHT);
        EXPECT_EQ(Panel(), 2);
        EXPECT_EQ(GetFocus(), strip);
        PressKey(VK_TAB);
        EXPECT_EQ(GetFocus(), In(IDC_OPTIONS_CHKALWAYSRESTARTTC));

        // The access keys of a panel that is out of sight do nothing.
        PressKey('g', WM_SYSCHAR);
        EXPECT_FALSE(IsChecked(IDC_OPTIONS_CHKSHOWGRIDLINES));
        PressKey('r', WM_SYSCHAR);
        EXPECT_TRUE(IsChecked(IDC_OPTIONS_CHKALWAYSRESTARTTC));
    });
}

TEST_F(OptionsWindowTest, EnterPressesTheButtonWithTheFocus) {
    Start();
    world.prompts.colorsToChoose = {"255"};
    world.prompts.fontsToChoose = {{"Arial", 12, 1, 204}};
    ShowOptions([&] {
        Focus(IDC_OPTIONS_LBLCOLORCHANGE1);
        PressKey(VK_RETURN);
        EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE1), RGB(255, 0, 0));
        Focus(IDC_OPTIONS_CMDCHANGEFONT);
        PressKey(VK_RETURN);
        EXPECT_TRUE(world.prompts.fontsToChoose.empty());
        EXPECT_EQ(Setting("BackgroundColor"), "-2147483643");
        Focus(IDC_OPTIONS_CHKFIXEDBORDERS);
        PressKey(VK_RETURN);
        EXPECT_EQ(Setting("BackgroundColor"), "255");
    });
}

TEST_F(OptionsWindowTest, ThePathIsForOtherLanguagesOnly) {
    PutOwnSettings("[Common]\r\nLanguageFile=a.lng\r\n");
    Start();
    ShowOptions([&] {
        PressWithControl(VK_PRIOR);
        const HWND box = In(IDC_OPTIONS_TXTLANGUAGEFILEPATH);
        for (const bool usesOther : {false, true}) {
            Click(usesOther ? IDC_OPTIONS_OPTUSEOTHELANGUAGE : IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE);
            EXPECT_EQ(IsOn(IDC_OPTIONS_TXTLANGUAGEFILEPATH), usesOther);
            EXPECT_EQ(IsOn(IDC_OPTIONS_CMDBROWSEFORLANGFILE), usesOther);
            const ScreenDC dc(box);
            SendMessageW(GetParent(box), usesOther ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC,
                         reinterpret_cast<WPARAM>(dc.Get()), reinterpret_cast<LPARAM>(box));
            EXPECT_EQ(GetBkColor(dc.Get()), GetSysColor(usesOther ? COLOR_WINDOW : COLOR_BTNFACE));
        }
        SendMessageW(box, EM_SETSEL, 0, 0);
        SetFocus(box);
        EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(0, strlen("a.lng")));
    });
}

TEST_F(OptionsWindowTest, BoxesBelongToTheDialogInFront) {
    Start();
    WindowPrompts prompts(L"Test");
    prompts.SetOwner(window->Handle());
    ShowOptions([&] {
        int boxes = 0;
        Timer timer([&] {
            const HWND box = FindWindowW(WC_DIALOG, nullptr);
            if (IsWindowVisible(box)) {
                ++boxes;
                EXPECT_EQ(GetWindow(box, GW_OWNER), dialog);
                EXPECT_FALSE(IsWindowEnabled(dialog));
                EXPECT_FALSE(IsWindowEnabled(window->Handle()));
                PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
            }
        });
        timer.Start(dialog, 50);
        EXPECT_EQ(prompts.Ask("?"), Answer::Cancel);
        EXPECT_EQ(std::exchange(boxes, 0), 1);
        FontChoice font{"Arial", 12, 1, 204};
        EXPECT_FALSE(prompts.FontSelect(font));
        EXPECT_EQ(std::exchange(boxes, 0), 1);
        EXPECT_EQ(prompts.ColorSelect(), MissingValueMarker);
        EXPECT_EQ(boxes, 1);
        EXPECT_TRUE(IsWindowEnabled(dialog));
    });
}

TEST_F(OptionsWindowTest, TheAboutWindowTellsTheVersionAndOpensTheHelp) {
    Start();
    int helps = 0;
    DialogLanguage language;
    language.text = [&](std::uint16_t number) { return Widen(world.session->Text(number)); };
    frmAbout about(language, {"A program", "5.01 beta", "D:\\Own.ini"}, [&] { ++helps; });
    Show(
        L"frmAbout", [&] { about.Show(window->Handle()); },
        [&] {
            EXPECT_EQ(TextOf(In(IDC_ABOUT_LBLNAME)), "A program");
            EXPECT_EQ(TextOf(In(IDC_ABOUT_LBLVERSION)), "Version 5.01 beta");
            EXPECT_EQ(TextOf(In(IDC_ABOUT_TXTSETTINGS)), "D:\\Own.ini");
            const auto icon = SendMessageW(In(IDC_ABOUT_IMGICON), STM_GETICON, 0, 0);
            ICONINFO parts{};
            ASSERT_TRUE(GetIconInfo(reinterpret_cast<HICON>(icon), &parts));
            const UniqueBitmap mask(parts.hbmMask);
            const UniqueBitmap picture(parts.hbmColor);
            BITMAP size{};
            GetObjectW(picture.Get(), sizeof(size), &size);
            EXPECT_EQ(size.bmWidth, ScaledPixels(48, WindowDpi(dialog)));
            Click(IDC_ABOUT_CMDHELP);
            EXPECT_EQ(helps, 1);
            PressKey(VK_ESCAPE);
            EXPECT_FALSE(IsWindowVisible(dialog));
        });
    EXPECT_EQ(helps, 1);
}

}  // namespace
}  // namespace tamarind
