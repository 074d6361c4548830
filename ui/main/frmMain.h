#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainCommands.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainMenu.h"
#include "ui/main/MainPanes.h"
#include "ui/main/MainStatusBar.h"
#include "ui/main/MainToolbar.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The main window. It makes its parts, places them, and handles what concerns all of them: closing,
// keys, activation, DPI, language. What the commands do is in MainCommands.
class frmMain final : public Window,
                      private WorkplaceListener,
                      private SettingsListener,
                      private MainWindowActions {
public:
    // `session` is kept by reference and must outlive the window.
    explicit frmMain(EditorSession& session);
    ~frmMain() override;

    // Makes the window at the place in the settings, but hidden until there is something to show.
    // False if Windows cannot create it.
    bool Create();
    // Shows the window for the first time; `showCommand` is one of the SW_ values.
    void ShowFirst(int showCommand);

    // Looks for another copy of the program that has this data file open, and brings its window to
    // the front. False if there is none. Waits at most two seconds for the answer of each copy.
    static bool BringForward(const std::string& dataFile);

    // The style of all dialogs. It follows the settings and lives as long as the window.
    const DialogStyle& Style() const { return m_dialogStyle; }

    // To be called by the message loop first. Returns whether the message was a key of this window
    // or of a modeless dialog, and has been handled.
    bool TranslateKey(MSG& message);

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate();
    // Whether the user, asked about unsaved changes, lets the window close.
    bool AskWhetherToClose();
    void OnSize(UINT kind);
    void OnActivate(UINT state);
    void OnSetFocus();
    void OnDpiChanged(int dpi, const RECT& bounds);
    // Looks for changes that other programs have made to the open files.
    void OnCheckFiles();
    // The answer to BringForward of another copy.
    LRESULT OnBringForward(WPARAM dataFile);
    void OnClose();
    bool OnQueryEndSession();
    void OnDestroy();

    void OnCommandsChanged() override;
    void OnLookChanged() override;
    void OnLanguageChanged() override;
    void OnSettingsFileChanged() override;

    void Execute(Command command) override { m_commands.Execute(command); }
    void ExecuteButton(Command command) override;
    void OpenChoices() override { m_commands.OpenChoices(); }
    void ContinueWithNextKey() override;
    void FocusKeyList() override { SetFocus(m_panes.Keys().List()); }
    void OpenOtherDataFile() override { m_session.OpenOtherDataFile(); }
    void ShowPopup(PopupMenu menu, POINT at) override;
    void ShowDropDown(Command command, const RECT& button) override;

    void ApplyLook(int dpi);
    Theme ThemeOfSettings() const;
    // Gives all windows the colors of the theme.
    void ShowPalette();
    void ShowCaption();
    void Layout();
    // Saves places and sizes in the own settings.
    void StoreLayout();
    void ReadStyle();
    void ApplyDirection();

    EditorSession& m_session;
    MainLook m_look;
    MainMenu m_menu;
    MainToolbar m_toolbar;
    MainPanes m_panes;
    MainStatusBar m_statusBar;
    DialogStyle m_dialogStyle;
    MainCommands m_commands;
    std::wstring m_caption;
    bool m_isToolbarShown = false;
    bool m_startsMaximized = false;
    bool m_isAskingToClose = false;
    bool m_isLayoutStored = false;
    bool m_followsFiles = false;
    HWND m_lastFocus = nullptr;
    Timer m_lookAgain{[this] { OnCheckFiles(); }};
};

}  // namespace tamarind
