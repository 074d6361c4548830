#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainCommands.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainMenu.h"
#include "ui/main/MainPanes.h"
#include "ui/main/MainStatusBar.h"
#include "ui/main/MainToolbar.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The main window: makes its parts, places them, and sees to what concerns all of them.
class frmMain final : public Window,
                      private WorkplaceListener,
                      private SettingsListener,
                      private MainWindowActions {
public:
    explicit frmMain(EditorSession& session);
    ~frmMain() override;

    // Makes the window where the settings want it, hidden until it has something to show.
    bool Create();
    void ShowFirst(int showCommand);

    // Brings the window of another copy of the program to the front that has the same data file
    // open. False: there is none.
    static bool BringForward(const std::string& dataFile);

    // Of the dialogs beside the window; it follows the settings.
    const DialogStyle& Style() const { return m_dialogStyle; }

    // Whether the message was one of the keys of this window or of a dialog beside it and is done
    // with.
    bool TranslateKey(MSG& message);

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate();
    bool AskWhetherToClose();
    void OnSize(UINT kind);
    void OnActivate(UINT state);
    void OnSetFocus();
    void OnDpiChanged(int dpi, const RECT& bounds);
    void OnCheckFiles();
    LRESULT OnBringForward(WPARAM dataFile);
    void OnClose();
    bool OnQueryEndSession();
    void OnDestroy();

    void OnCommandsChanged() override;
    void OnLookChanged() override;
    void OnLanguageChanged() override;
    void OnTargetChanged() override;

    void Execute(Command command) override { m_commands.Execute(command); }
    void ExecuteButton(Command command) override;
    void FocusKeyList() override { SetFocus(m_panes.Keys().List()); }
    void ShowPopup(PopupMenu menu, POINT at) override;
    void ShowDropDown(Command command, const RECT& button) override;

    void ApplyLook(int dpi);
    void Layout();
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
    bool m_isToolbarShown = false;
    bool m_startsMaximized = false;
    bool m_isAskingToClose = false;
    bool m_isLayoutStored = false;
    bool m_followsFiles = false;
    HWND m_lastFocus = nullptr;
    Timer m_lookAgain{[this] { OnCheckFiles(); }};
};

}  // namespace tamarind
