#pragma once

#include <windows.h>

#include "model/session/EditorSession.h"
#include "ui/favorites/frmOrganizeFavorites.h"
#include "ui/main/MainPanes.h"
#include "ui/search/frmSearchFor.h"

namespace tamarind {

// Does what menus, keys and toolbars ask for.
class MainCommands {
public:
    // All arguments outlive it.
    MainCommands(EditorSession& session, MainPanes& panes, const DialogStyle& style);

    // The main window, which owns the dialogs and is closed by File > Exit.
    void SetOwner(HWND owner) { m_owner = owner; }

    // A number that came with WM_COMMAND: of a command, of an entry that a menu has besides, or of
    // a key that moves the focus.
    void OnCommand(int id);
    // Does nothing for a command that is not enabled.
    void Execute(Command command);

    // The dialogs beside the main window.
    frmOrganizeFavorites& Organizer() { return m_organizeFavorites; }
    void ApplyLanguage();

private:
    void OnEntry(int id);
    void Do(Command command);
    void AddFavorite();
    void ShowFavorite(int place);
    void ContinueAfter(bool isStored);
    void ShowAbout();
    void FocusKeyList() { SetFocus(m_panes.Keys().List()); }

    EditorSession& m_session;
    MainPanes& m_panes;
    const DialogStyle& m_style;
    HWND m_owner = nullptr;
    frmSearchFor m_searchFor;
    frmOrganizeFavorites m_organizeFavorites;
};

}  // namespace tamarind
