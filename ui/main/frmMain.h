#pragma once

#include "model/session/EditorSession.h"
#include "ui/favorites/frmOrganizeFavorites.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainMenu.h"
#include "ui/main/MainPanes.h"
#include "ui/main/MainStatusBar.h"
#include "ui/main/MainToolbar.h"
#include "ui/main/MainWindowActions.h"
#include "ui/search/frmSearchFor.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The main window: shows what the session holds and tells it what the user does.
class frmMain final : public Window,
                      public SessionListener,
                      private MainWindowActions,
                      private FavoritesHost {
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
    const DialogStyle& Language() const { return m_dialogStyle; }

    // Whether the message was one of the keys of this window or of a dialog beside it and is done
    // with.
    bool TranslateKey(MSG& message);

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate();
    bool AskWhetherToClose();
    void OnCommand(int id);
    void OnEntry(int id);
    void OnAddFavorite();
    void OnValueCommand(bool isStored);
    void OnDeleteCommand();
    void OnSize(UINT kind);
    void OnActivate(UINT state);
    void OnSetFocus();
    void OnDpiChanged(int dpi, const RECT& bounds);
    void OnCheckFiles();
    LRESULT OnBringForward(WPARAM dataFile);
    void OnClose();
    bool OnQueryEndSession();
    void OnDestroy();

    void OnTargetChanged() override;
    void OnDataFileChanged() override;
    void OnCategoriesChanged() override;
    void OnCategorySelected() override;
    void OnKeyListChanged() override;
    void OnKeyShown() override;
    void OnWentToKey() override;
    void OnTargetShown() override;
    void OnKeyChanged(RowKey key) override;
    void OnBeforeChange() override;
    void OnCommandsChanged() override;
    void OnLookChanged() override;
    void OnLanguageChanged() override;
    void OnFavoritesChanged() override;
    void OnFavoriteAppended() override;
    void OnDescriptionHit(std::size_t start, std::size_t length) override;
    void OnProgress(const ProgressMeter& progress) override;
    void OnProgressEnd() override;

    void Execute(Command command) override;
    void ExecuteButton(Command command) override;
    void ShowFavorite() override;
    void ShowPopup(PopupMenu menu, POINT at) override;
    void ShowDropDown(Command command, const RECT& button) override;

    void ApplyLook(int dpi);
    void Layout();
    void StoreLayout();
    void ReadLanguage();
    void ApplyDirection();
    void ShowAbout();

    EditorSession& m_session;
    MainLook m_look;
    MainMenu m_menu;
    MainToolbar m_toolbar;
    MainPanes m_panes;
    MainStatusBar m_statusBar;
    DialogStyle m_dialogStyle;
    frmSearchFor m_searchFor;
    frmOrganizeFavorites m_organizeFavorites;
    bool m_isToolbarShown = false;
    bool m_startsMaximized = false;
    bool m_isAskingToClose = false;
    bool m_isLayoutStored = false;
    bool m_followsFiles = false;
    HWND m_lastFocus = nullptr;
    Timer m_lookAgain{[this] { OnCheckFiles(); }};
};

}  // namespace tamarind
