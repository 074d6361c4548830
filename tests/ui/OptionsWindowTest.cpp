#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/shell/ShellIds.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {
namespace {

constexpr const char* kLanguageFile = "C:\\Tamarind\\Languages\\Other.lng";

// The dialogs of the View and Help menus, over the main window.
class OptionsWindowTest : public MainWindowTest {
protected:
    void ShowOptions(const std::function<void()>& actions) {
        Show(L"frmOptions", actions, [&] { Do(Command::ViewOptions); });
    }
    void Focus(int id) const {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(In(id)), TRUE);
    }
    static void PressWithControl(WPARAM key, bool withShift = false) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        keys[VK_SHIFT] = withShift ? 0x80 : 0;
        SetKeyboardState(keys);
        PressKey(key);
        keys[VK_CONTROL] = keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
    }
    // A control of each panel, in the order of the tabs.
    static constexpr int kPanels[] = {IDC_OPTIONS_CMDCHANGEFONT, IDC_OPTIONS_CHKALWAYSRESTARTTC,
                                      IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE};
    // Whether the panel with that control can be seen and used, and no other.
    bool ShowsOnlyPanelOf(int wanted) const {
        return std::ranges::all_of(kPanels, [&](int id) {
            const HWND panel = GetParent(In(id));
            return IsWindowVisible(panel) == (id == wanted) &&
                   IsWindowEnabled(panel) == (id == wanted);
        });
    }
    // In the middle of a control.
    COLORREF ColorOf(int id) const {
        RedrawWindow(In(id), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const ScreenDC dc(In(id));
        return GetPixel(dc.Get(), WidthOf(In(id)) / 2, HeightOf(In(id)) / 2);
    }
};

TEST_F(OptionsWindowTest, ChangesReachTheSettingsByApplyAndOkOnly) {
    world.disk.Put(kLanguageFile,
                   "[UserLanguage]\r\n1001=Einstellungen\r\n1008=" + std::string(40, 'W'));
    PutOwnSettings(
        "FixedBorders=0\r\n"
        "ForegroundColor=255\r\nBackgroundColor=65535\r\nActiveKeyForeColor=16711680\r\n");
    Start();
    const struct {
        int control;
        const char* key;
        const char* value;  // once it was clicked
    } options[] = {
        {IDC_OPTIONS_CHKSHOWGRIDLINES, "CommandListShowLines", "1"},
        {IDC_OPTIONS_CHKFLATUSERINTERFACE, "FlatUserInterface", "1"},
        {IDC_OPTIONS_CHKFIXEDBORDERS, "FixedBorders", "1"},
        {IDC_OPTIONS_CHKALWAYSRESTARTTC, "AlwaysRestartTC", "1"},
        {IDC_OPTIONS_CHKAUTOSELECTNEXTKEY, "AutoSelectNextKey", "1"},
        {IDC_OPTIONS_LBLCOLORCHANGE0, "ForegroundColor", "1"},
        {IDC_OPTIONS_LBLCOLORCHANGE1, "BackgroundColor", "2"},
        {IDC_OPTIONS_LBLCOLORCHANGE2, "ActiveKeyForeColor", "3"},
        {IDC_OPTIONS_CMDCHANGEFONT, "FontName", "Arial"},
        {IDC_OPTIONS_OPTUSEOTHELANGUAGE, "UseDefaultLanguage", "0"},
    };
    const std::string before = StoredSettings();
    for (const bool isCancelled : {true, false}) {
        ShowOptions([&] {
            EXPECT_FALSE(IsWindowEnabled(Main()));
            EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE0), RGB(255, 0, 0));
            EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE1), RGB(255, 255, 0));
            EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE2), RGB(0, 0, 255));
            EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDBROWSEFORLANGFILE) ||
                         IsOn(IDC_OPTIONS_TXTLANGUAGEFILEPATH));
            // What changes nothing: an option that is set, and choosers that are cancelled.
            for (const int id : {IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE, IDC_OPTIONS_LBLCOLORCHANGE1,
                                 IDC_OPTIONS_CMDCHANGEFONT}) {
                Click(id);
                EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY)) << id;
            }
            world.prompts.colorsToChoose = {"1", "2", "3"};
            world.prompts.fontsToChoose = {{"Arial", 12, 1, 204}};
            for (const auto& [control, key, value] : options) {
                SCOPED_TRACE(key);
                Click(control);
                EXPECT_TRUE(IsOn(IDC_OPTIONS_CMDAPPLY));
                EXPECT_NE(OwnSettings({key}), Strings{value});
                if (!isCancelled) {
                    Click(IDC_OPTIONS_CMDAPPLY);
                    EXPECT_FALSE(IsOn(IDC_OPTIONS_CMDAPPLY));
                    EXPECT_EQ(OwnSettings({key}), Strings{value});
                }
            }
            EXPECT_TRUE(IsOn(IDC_OPTIONS_CMDBROWSEFORLANGFILE) &&
                        IsOn(IDC_OPTIONS_TXTLANGUAGEFILEPATH));
            SetWindowTextW(In(IDC_OPTIONS_TXTLANGUAGEFILEPATH), L"a");
            EXPECT_TRUE(IsOn(IDC_OPTIONS_CMDAPPLY));
            world.prompts.filesToChoose = {kLanguageFile};
            Click(IDC_OPTIONS_CMDBROWSEFORLANGFILE);
            Click(isCancelled ? IDCANCEL : IDOK);
        });
        EXPECT_EQ(StoredSettings() == before, isCancelled);
    }
    ShowOptions([&] {
        EXPECT_EQ(TextOf(dialog), "Einstellungen");
        SIZE wanted{};  // by a button whose text has become long
        Button_GetIdealSize(In(IDOK), &wanted);
        EXPECT_GE(WidthOf(In(IDOK)), wanted.cx);
        EXPECT_EQ(TextOf(In(IDC_OPTIONS_TXTLANGUAGEFILEPATH)), kLanguageFile);
    });
}

TEST_F(OptionsWindowTest, TabsAndButtonsFollowTheKeyboard) {
    Start();
    ShowOptions([&] {
        EXPECT_TRUE(ShowsOnlyPanelOf(kPanels[0]));
        Focus(kPanels[0]);
        for (const auto& [key, withShift, panel] : {std::tuple(VK_TAB, false, 1),
                                                    {VK_TAB, true, 0},
                                                    {VK_TAB, true, 2},
                                                    {VK_NEXT, false, 0}}) {
            PressWithControl(key, withShift);
            EXPECT_TRUE(ShowsOnlyPanelOf(kPanels[panel])) << panel;
            EXPECT_EQ(GetParent(GetFocus()), GetParent(In(kPanels[panel]))) << panel;
        }
        Focus(IDC_OPTIONS_TBSOPTIONS);
        PressKey(VK_RIGHT);
        EXPECT_TRUE(ShowsOnlyPanelOf(IDC_OPTIONS_CHKALWAYSRESTARTTC));
        EXPECT_EQ(GetFocus(), In(IDC_OPTIONS_TBSOPTIONS));
        PressKey(VK_TAB);
        EXPECT_EQ(GetFocus(), In(IDC_OPTIONS_CHKALWAYSRESTARTTC));

        // The access keys of a panel that is out of sight do nothing.
        PressKey('g', WM_SYSCHAR);
        EXPECT_FALSE(IsChecked(IDC_OPTIONS_CHKSHOWGRIDLINES));
        PressKey('r', WM_SYSCHAR);
        EXPECT_TRUE(IsChecked(IDC_OPTIONS_CHKALWAYSRESTARTTC));

        // Enter presses the button with the focus, or else the usual one.
        world.prompts.fontsToChoose = {{"Arial", 12, 1, 204}};
        PressWithControl(VK_PRIOR);
        Focus(IDC_OPTIONS_CMDCHANGEFONT);
        PressKey(VK_RETURN);
        EXPECT_TRUE(world.prompts.fontsToChoose.empty());
        world.prompts.colorsToChoose = {"255"};
        Focus(IDC_OPTIONS_LBLCOLORCHANGE1);
        PressKey(VK_RETURN);
        EXPECT_EQ(ColorOf(IDC_OPTIONS_LBLCOLORCHANGE1), RGB(255, 0, 0));
        Focus(IDC_OPTIONS_CHKFIXEDBORDERS);
        PressKey(VK_RETURN);
        EXPECT_EQ(OwnSettings({"BackgroundColor"}), Strings{"255"});
    });
}

// By the user, and at the end of Windows: then nothing is taken for an answer, whatever is open.
TEST_F(OptionsWindowTest, BoxesBelongToTheDialogInFrontAndAreCancelledWithIt) {
    Start();
    Do(Command::SearchFind);
    const std::string before = StoredSettings();
    FontChoice font{"Arial", 12, 1, 204};
    const std::function<bool()> questions[] = {
        [&] { return prompts.Ask("?") == Answer::Cancel; },
        [&] { return !prompts.AskWhetherSure("?"); },
        [&] { return prompts.ShowMessage(MessageIcon::Critical, "!"), true; },
        [&] { return !prompts.FontSelect(font); },
        [&] { return prompts.ColorSelect() == MissingValueMarker; },
        [&] { return prompts.BrowseForOpen({}) == MissingValueMarker; },
        [] { return Dialog::CancelModalDialogs(); },  // the options window alone
    };
    for (const bool byUser : {true, false}) {
        for (const auto& isCancelled : std::span(questions).first(byUser ? 6 : 7)) {
            SCOPED_TRACE(&isCancelled - questions);
            ShowOptions([&] {
                Click(IDC_OPTIONS_CHKSHOWGRIDLINES);
                Timer timer([&] {
                    const HWND box = FindWindowW(WC_DIALOG, nullptr);
                    if (IsWindowVisible(box)) {
                        EXPECT_EQ(GetWindow(box, GW_OWNER), dialog);
                        EXPECT_FALSE(IsWindowEnabled(dialog) || IsWindowEnabled(Main()));
                        if (byUser) {
                            PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
                        } else {
                            EXPECT_TRUE(Dialog::CancelModalDialogs());
                            EXPECT_FALSE(Dialog::CancelModalDialogs());
                        }
                    }
                });
                timer.Start(dialog, 50);
                EXPECT_TRUE(isCancelled());
                EXPECT_EQ(IsWindowVisible(dialog) && IsWindowEnabled(dialog), byUser);
            });
            EXPECT_EQ(StoredSettings(), before);
        }
    }
    EXPECT_TRUE(IsWindowVisible(FindWindowW(L"frmSearchFor", nullptr)));  // not modal
}

}  // namespace
}  // namespace tamarind
