#pragma once

#include <windows.h>

#include "model/session/EditorSession.h"
#include "ui/changes/frmPendingChanges.h"
#include "ui/favorites/frmOrganizeFavorites.h"
#include "ui/main/MainPanes.h"
#include "ui/search/frmSearchFor.h"

namespace tamarind {

// Carries out what menus, shortcuts and toolbars ask for, and owns the modeless dialogs. Which
// commands are enabled is decided by CommandStates.
class MainCommands {
public:
    // All arguments are kept by reference and must outlive this object.
    MainCommands(EditorSession& session, MainPanes& panes, const DialogStyle& style);

    // The main window. It owns the dialogs and is closed by File > Exit.
    void SetOwner(HWND owner) { m_owner = owner; }

    // Handles a number that came with WM_COMMAND: a command, another menu entry (EntryId), or a key
    // that moves the focus (FocusId).
    void OnCommand(int id);
    // Carries out a command, or does nothing if it is not enabled.
    void Execute(Command command);

    // Opens the choices of the current key, or where it has none a box to type its value in.
    void OpenChoices();

    // The window is open only from time to time; the object always exists.
    frmOrganizeFavorites& Organizer() { return m_organizeFavorites; }
    void ApplyLanguage();

private:
    void OnEntry(int id);
    void Do(Command command);
    void ChooseValue();
    void AddFavorite();
    void ShowFavorite(int place);
    // After a value was stored, goes on to the next key if the settings say so.
    void ContinueAfter(bool isStored);
    void DescribeKey();
    void ShowAbout();
    void FocusKeyList() { SetFocus(m_panes.Keys().List()); }

    EditorSession& m_session;
    MainPanes& m_panes;
    const DialogStyle& m_style;
    HWND m_owner = nullptr;
    frmSearchFor m_searchFor;
    frmOrganizeFavorites m_organizeFavorites;
    frmPendingChanges m_pendingChanges;
};

}  // namespace tamarind
