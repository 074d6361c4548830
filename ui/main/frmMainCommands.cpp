// The part of frmMain that does what menus, keys and the toolbar ask for.
#include "ui/changes/frmRestoreBackup.h"
#include "ui/favorites/frmFavoriteAdd.h"
#include "ui/main/ControlIds.h"
#include "ui/main/frmMain.h"
#include "ui/shell/frmAbout.h"
#include "ui/shell/frmOptions.h"

namespace tamarind {

void frmMain::OnCommand(int id) {
    switch (id) {
        case kIdNextPane:
            m_panes.FocusNext(true);
            break;
        case kIdPreviousPane:
            m_panes.FocusNext(false);
            break;
        default:
            if (FindCommand(static_cast<std::uint32_t>(id)) != nullptr) {
                Execute(static_cast<Command>(id));
            } else if (!m_session.IsBusy()) {
                OnEntry(id);
            }
            break;
    }
}

void frmMain::OnEntry(int id) {
    if (id >= kIdRecentFirst && id < kIdClearRecent) {
        m_session.OpenRecentFile(static_cast<std::int16_t>(id - kIdRecentFirst + 1));
    } else if (id == kIdClearRecent) {
        m_session.ClearRecentFiles();
    } else if (id >= kIdFavoriteFirst && id <= kIdFavoriteLast) {
        const auto& favorites = m_session.FavoriteItems();
        const auto place = static_cast<std::size_t>(id - kIdFavoriteFirst);
        if (place < favorites.size()) {
            // By value: showing it may make the list anew.
            const std::string name = favorites[place].name;
            if (m_session.FavoriteDefinition(name)) {
                ShowFavorite();
            }
        }
    }
}

void frmMain::ShowFavorite() {
    SetFocus(m_panes.Keys().List());
}

void frmMain::OnAddFavorite() {
    if (const auto name = m_session.BeginAddFavorite()) {
        if (const auto caption = frmFavoriteAdd(m_dialogStyle).Ask(Handle(), *name)) {
            m_session.AddFavorite(*name, *caption);
        }
    }
}

void frmMain::Execute(Command command) {
    if (m_session.IsBusy()) {
        return;
    }
    // The key list asks to edit under a heading, too, which is heard.
    const bool isHeard = command == Command::EditValue && m_session.ShowsHeading();
    if (!m_session.IsEnabled(command) && !isHeard) {
        return;
    }
    switch (command) {
        case Command::FileOpen:
            m_session.AskOpenSettingsFile();
            break;
        case Command::FileOpenDataFile:
            m_session.AskOpenDataFile();
            break;
        case Command::FileSave:
            m_session.SaveToSettingsFile();
            break;
        case Command::FileSaveDataFile:
            m_session.SaveDataFile();
            break;
        case Command::FileExport:
            m_session.ExportKeys();
            break;
        case Command::FileImport:
            m_session.ImportKeys();
            break;
        case Command::FileRestoreBackup:
            frmRestoreBackup(m_session, m_dialogStyle).Show(Handle());
            break;
        case Command::FileSaveAndRestart:
            m_session.SaveAndRestart();
            break;
        case Command::FileExit:
            PostMessageW(Handle(), WM_CLOSE, 0, 0);
            break;
        case Command::EditUndo:
            m_session.Undo();
            break;
        case Command::EditRedo:
            m_session.Redo();
            break;
        case Command::EditValue:
            m_panes.Keys().BeginInplaceEdit();
            break;
        case Command::EditSetValue1:
            OnValueCommand(m_session.SetValue("1"));
            break;
        case Command::EditSetValue0:
            OnValueCommand(m_session.SetValue("0"));
            break;
        case Command::EditBrowseValue:
            OnValueCommand(m_session.BrowseValue());
            break;
        case Command::EditComment:
            m_session.CommentKey();
            break;
        case Command::EditDelete:
            OnDeleteCommand();
            break;
        case Command::ViewToolbar:
            m_session.SetToolbarVisible(!m_session.IsToolbarVisible());
            break;
        case Command::ViewDescription:
            m_session.SetDescriptionVisible(!m_session.IsDescriptionVisible());
            break;
        case Command::ViewAllKeys:
            m_session.SetKeyFilter(KeyFilter::ShowAll);
            break;
        case Command::ViewActiveKeys:
            m_session.SetKeyFilter(KeyFilter::ShowActive);
            break;
        case Command::ViewInactiveKeys:
            m_session.SetKeyFilter(KeyFilter::ShowInactive);
            break;
        case Command::ViewOptions:
            frmOptions(m_session, m_dialogStyle).Show(Handle());
            break;
        case Command::HelpTopics:
            m_session.ShowHelpTopics();
            break;
        case Command::HelpAbout:
            ShowAbout();
            break;
        case Command::SearchFind:
            m_searchFor.Open(Handle());
            break;
        case Command::SearchFindNext:
            m_searchFor.FindNextString(Handle());
            break;
        case Command::FavoritesAdd:
            OnAddFavorite();
            break;
        case Command::FavoritesOrganize:
            m_organizeFavorites.Open(Handle());
            break;
        default:
            break;
    }
}

void frmMain::ExecuteButton(Command command) {
    m_panes.Keys().CloseInplaceEdit();
    Execute(command);
}

void frmMain::OnValueCommand(bool isStored) {
    if (isStored) {
        m_panes.Keys().ContinueWithNextKey();
    }
}

// A key whose value is being typed is not deleted.
void frmMain::OnDeleteCommand() {
    if (!m_panes.Keys().IsEditing()) {
        m_session.DeleteKey();
    }
}

void frmMain::ShowPopup(PopupMenu menu, POINT at) {
    m_menu.ShowPopup(Handle(), menu, at);
}

void frmMain::ShowDropDown(Command command, const RECT& button) {
    m_menu.ShowDropDown(Handle(), command, button);
}

void frmMain::ShowAbout() {
    frmAbout(
        m_dialogStyle,
        {EditorSession::kProgramName, m_session.VersionText(), m_session.ProgramSettings().Path()},
        [this] { m_session.ShowHelpTopics(); })
        .Show(Handle());
}

}  // namespace tamarind
