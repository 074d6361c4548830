#include "ui/main/MainCommands.h"

#include <string>

#include "ui/changes/frmRestoreBackup.h"
#include "ui/favorites/frmFavoriteAdd.h"
#include "ui/keys/frmAddKey.h"
#include "ui/keys/frmDescribeKey.h"
#include "ui/keys/frmIgnoredLines.h"
#include "ui/main/ControlIds.h"
#include "ui/shell/frmAbout.h"
#include "ui/shell/frmOptions.h"

namespace tamarind {
namespace {

// The column that a command shows or hides.
KeyColumn ColumnOf(Command command) {
    constexpr int kFirst = static_cast<int>(Command::ViewColumnState);
    return static_cast<KeyColumn>(static_cast<int>(command) - kFirst +
                                  static_cast<int>(KeyColumn::State));
}

}  // namespace

MainCommands::MainCommands(EditorSession& session, MainPanes& panes, const DialogStyle& style)
    : m_session(session),
      m_panes(panes),
      m_style(style),
      m_searchFor(session.Place(), session.Finding(), style, [this] { FocusKeyList(); }),
      m_organizeFavorites(session.Place(), session.Selection(), session.FavoriteKeys(), style,
                          [this] { FocusKeyList(); }),
      m_pendingChanges(session.Place(), session.Pending(), style,
                       {[this](KeyNumber key) {
                            m_session.Undescribed().GoTo(key);
                            FocusKeyList();
                        },
                        [this] { Execute(Command::FileSave); }}) {}

void MainCommands::ApplyLanguage() {
    m_searchFor.ApplyLanguage();
    m_organizeFavorites.ApplyLanguage();
    m_pendingChanges.ApplyLanguage();
}

void MainCommands::OnCommand(int id) {
    switch (id) {
        case kIdNextPane:
            m_panes.FocusNext(true);
            break;
        case kIdPreviousPane:
            m_panes.FocusNext(false);
            break;
        case kIdNextPart:
        case kIdPreviousPart:
            m_panes.FocusNextPart(id == kIdNextPart, GetDlgItem(m_owner, kIdToolbar1));
            break;
        default:
            if (FindCommand(static_cast<std::uint32_t>(id)) != nullptr) {
                Execute(static_cast<Command>(id));
            } else if (!m_session.Place().IsBusy()) {
                OnEntry(id);
            }
            break;
    }
}

// Entries that are no commands: a recent file, "Clear List", a favorite.
void MainCommands::OnEntry(int id) {
    if (id >= kIdRecentFirst && id < kIdClearRecent) {
        m_panes.Keys().CloseInplaceEdit();
        m_session.OpenRecentFile(static_cast<std::int16_t>(id - kIdRecentFirst + 1));
    } else if (id == kIdClearRecent) {
        m_session.Recent().Clear();
    } else if (id >= kIdFavoriteFirst && id <= kIdFavoriteLast) {
        ShowFavorite(id - kIdFavoriteFirst);
    }
}

void MainCommands::ShowFavorite(int place) {
    FavoritesBook& favorites = m_session.FavoriteKeys();
    const auto at = static_cast<std::size_t>(place);
    if (at < favorites.Items().size()) {
        m_panes.Keys().CloseInplaceEdit();
        // A copy, because showing the favorite may build the list again.
        const std::string name = favorites.Items()[at].name;
        if (favorites.FavoriteDefinition(name)) {
            FocusKeyList();
        }
    }
}

void MainCommands::Execute(Command command) {
    // Under a heading the list may ask for an edit, too; KeyCommands answers it with a sound.
    const bool isHeard = command == Command::EditValue && m_session.Selection().ShowsHeading() &&
                         !m_session.Place().IsBusy();
    if (!m_session.States().IsEnabled(command) && !isHeard) {
        return;
    }
    if (InfoOf(command).endsEditing) {
        m_panes.Keys().CloseInplaceEdit();
    }
    Do(command);
}

// What each command does. Whether it may is decided before.
void MainCommands::Do(Command command) {
    Workplace& workplace = m_session.Place();
    KeySelection& selection = m_session.Selection();
    KeyCommands& keys = m_session.Commands();
    switch (command) {
        case Command::FileOpen:
            m_session.AskOpenSettingsFile();
            break;
        case Command::FileOpenDataFile:
            m_session.AskOpenDataFile();
            break;
        case Command::FileSave:
            m_session.Settings().SaveToSettingsFile();
            break;
        case Command::FileSaveDataFile:
            m_session.DataFile().SaveDataFile();
            break;
        case Command::FileExport:
            m_session.Exchange().Export();
            break;
        case Command::FileExportSelected:
            m_session.Exchange().ExportSelected();
            break;
        case Command::FileExportDifferences:
            m_session.Exchange().ExportSelectedDifferences();
            break;
        case Command::FileImport:
            m_session.Exchange().Import();
            break;
        case Command::FilePendingChanges:
            m_pendingChanges.Open(m_owner);
            break;
        case Command::FileRestoreBackup:
            frmRestoreBackup(m_session.Settings(), m_style).Show(m_owner);
            break;
        case Command::FileSaveAndRestart:
            m_session.Settings().SaveAndRestart();
            break;
        case Command::FileExit:
            PostMessageW(m_owner, WM_CLOSE, 0, 0);
            break;
        case Command::EditUndo:
            keys.Undo();
            break;
        case Command::EditRedo:
            keys.Redo();
            break;
        case Command::EditValue:
            m_panes.Keys().BeginInplaceEdit();
            break;
        case Command::EditSetValue1:
            ContinueAfter(keys.SetValue("1"));
            break;
        case Command::EditSetValue0:
            ContinueAfter(keys.SetValue("0"));
            break;
        case Command::EditBrowseValue:
            ChooseValue();
            break;
        case Command::EditComment:
            keys.CommentKeys();
            break;
        case Command::EditDelete:
            // The Delete key must not delete a key while its value is being typed.
            if (!m_panes.Keys().IsEditing()) {
                keys.DeleteKeys();
            }
            break;
        case Command::EditReset:
            keys.ResetKeys();
            break;
        case Command::EditResetCategory:
            keys.ResetCategory();
            break;
        case Command::EditCopy:
            keys.CopyKeys();
            break;
        case Command::EditSelectAll:
            m_panes.Keys().SelectAll();
            break;
        case Command::ViewToolbar:
            workplace.SetVisible(WindowPart::Toolbar, !workplace.IsVisible(WindowPart::Toolbar));
            break;
        case Command::ViewDescription:
            workplace.SetVisible(WindowPart::Description,
                                 !workplace.IsVisible(WindowPart::Description));
            break;
        case Command::ViewAllKeys:
            selection.SetKeyFilter(KeyFilter::ShowAll);
            break;
        case Command::ViewActiveKeys:
            selection.SetKeyFilter(KeyFilter::ShowActive);
            break;
        case Command::ViewInactiveKeys:
            selection.SetKeyFilter(KeyFilter::ShowInactive);
            break;
        case Command::ViewChangedKeys:
            selection.SetKeyFilter(KeyFilter::ShowChanged);
            break;
        case Command::ViewDifferentKeys:
            selection.SetKeyFilter(KeyFilter::ShowDifferent);
            break;
        case Command::ViewOptions:
            frmOptions(workplace.Options(), m_style).Show(m_owner);
            break;
        case Command::HelpTopics:
            workplace.ShowHelpTopics();
            break;
        case Command::HelpAbout:
            ShowAbout();
            break;
        case Command::ViewValueBar:
            workplace.SetVisible(WindowPart::ValueBar, !workplace.IsVisible(WindowPart::ValueBar));
            break;
        case Command::ViewFilterBar:
            workplace.SetVisible(WindowPart::FilterBar,
                                 !workplace.IsVisible(WindowPart::FilterBar));
            break;
        case Command::EditDescribe:
            DescribeKey();
            break;
        case Command::EditAddKey:
            if (frmAddKey(m_session.Adding(), m_style).Show(m_owner)) {
                FocusKeyList();
                m_panes.Keys().BeginInplaceEdit();
            }
            break;
        case Command::ViewIgnoredLines:
            if (frmIgnoredLines(m_session.IgnoredLines(), m_style).Show(m_owner)) {
                FocusKeyList();
            }
            break;
        case Command::ViewUndescribed:
            m_session.Undescribed().Show(!workplace.IsVisible(WindowPart::UndescribedKeys));
            break;
        case Command::ViewColumnState:
        case Command::ViewColumnDefault:
        case Command::ViewColumnMeaning:
        case Command::ViewColumnCategory:
        case Command::ViewColumnSection:
            m_panes.Keys().KeepColumns();
            m_session.Columns().Toggle(ColumnOf(command));
            break;
        case Command::SearchFind:
            m_searchFor.Open(m_owner);
            break;
        case Command::SearchFindNext:
            m_searchFor.FindNextString(m_owner);
            break;
        case Command::SearchShowInCategory:
            selection.ShowInCategory();
            FocusKeyList();
            break;
        case Command::SearchFilter:
            workplace.SetVisible(WindowPart::FilterBar, true);
            m_panes.Keys().Filter().Focus();
            break;
        case Command::SearchFilterAgain:
            m_session.Filter().ApplyAgain();
            break;
        case Command::FavoritesAdd:
            AddFavorite();
            break;
        case Command::FavoritesOrganize:
            m_organizeFavorites.Open(m_owner);
            break;
        default:
            break;
    }
}

void MainCommands::OpenChoices() {
    if (!m_panes.Value().OpenChoices(m_panes.Keys().CurrentRowBounds())) {
        Execute(Command::EditValue);
    }
}

void MainCommands::ChooseValue() {
    if (m_session.Editing().WayToChoose() == ChoosingWay::Dialog) {
        ContinueAfter(m_session.Editing().Browse());
    } else {
        OpenChoices();
    }
}

void MainCommands::AddFavorite() {
    FavoritesBook& favorites = m_session.FavoriteKeys();
    if (const auto name = favorites.BeginAddFavorite()) {
        if (const auto caption = frmFavoriteAdd(m_style).Ask(m_owner, *name)) {
            favorites.AddFavorite(*name, *caption);
        }
    }
}

void MainCommands::ContinueAfter(bool isStored) {
    if (isStored) {
        m_panes.Keys().ContinueWithNextKey();
    }
}

void MainCommands::DescribeKey() {
    KeyDescribing& describing = m_session.Describing();
    if (!describing.Prepare()) {
        return;
    }
    const KeySelection& selection = m_session.Selection();
    const KeyRecord record = selection.Rows().Record(*selection.Rows().CurrentKey());
    const bool isNew = !selection.Rows().Store().HasDescription(*selection.Rows().CurrentKey());
    const auto text = frmDescribeKey(m_style).Ask(
        m_owner, describing.LabelFor(record.keyName),
        isNew ? std::string() : selection.Rows().Description(), KeyDescribing::MaxUnits());
    if (text) {
        describing.Describe(*text);
    }
}

void MainCommands::ShowAbout() {
    Workplace& workplace = m_session.Place();
    frmAbout(m_style,
             {EditorSession::kProgramName, workplace.Services().versionText,
              workplace.OwnSettings().Path()},
             [&workplace] { workplace.ShowHelpTopics(); })
        .Show(m_owner);
}

}  // namespace tamarind
