// The part of EditorSession that keeps what it shows and the files on disk together.
#include <algorithm>

#include "core/MissingValueMarker.h"
#include "core/Unicode.h"
#include "model/EditorSession.h"
#include "model/KeyStates.h"
#include "model/StringTable.h"

namespace tamarind {
namespace {

// A pending change as the line that it will write; empty for none.
std::string PendingLine(const KeyRecord& record) {
    if (record.Looks().isGhosted) {
        return {};
    }
    return (record.Looks().isChecked ? "" : ";") + VisibleText(record);
}

}  // namespace

SettingsFiles EditorSession::ReadSettings(const std::string& path) const {
    return SettingsFiles::Read(m_services.files, m_services.environment, path);
}

// Said when the file is opened, before there is anything to lose.
void EditorSession::ReportUnwritable(const std::string& path) {
    const ProfileResult result = {m_services.files.Files().CheckReplace(path), IniEdit::Unchanged};
    if (!result.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, path, result);
    }
}

void EditorSession::ReportLoops() {
    for (const std::string& section : m_settingsFiles.Loops()) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation,
                                       Text(text::kRedirectionLoop) + " [" + section + "]");
    }
}

bool EditorSession::TakeOutsideChanges(bool asksAgain) {
    if (m_isBusy || m_settingsFiles.IsEmpty()) {
        return true;
    }
    SettingsFiles now = ReadSettings(m_settingsPath);
    const bool isUnreadable =
        std::any_of(now.Files().begin(), now.Files().end(), [](const SettingsFiles::File& file) {
            return file.error != FileError::None && !IsMissing(file.error);
        });
    // What can not be read now will be compared the next time, or by the save itself.
    if (isUnreadable || now.IsSameAs(m_settingsFiles)) {
        return !asksAgain || ResolveConflicts();
    }
    const OutsideChanges changes = tamarind::TakeOutsideChanges(m_store, m_settingsFiles, now);
    m_settingsFiles = std::move(now);
    for (const RowKey key : changes.changed) {
        m_listener->OnKeyChanged(key);
    }
    m_listener->OnTargetShown();
    m_listener->OnCommandsChanged();
    m_conflicts.insert(m_conflicts.end(), changes.conflicts.begin(), changes.conflicts.end());
    return ResolveConflicts();
}

// False: the user wants to decide later.
bool EditorSession::ResolveConflicts() {
    // Some may have been undone meanwhile, or found twice.
    std::sort(m_conflicts.begin(), m_conflicts.end());
    m_conflicts.erase(std::unique(m_conflicts.begin(), m_conflicts.end()), m_conflicts.end());
    std::erase_if(m_conflicts, [this](RowKey key) { return !m_store.IsPending(key); });
    std::vector<ValueConflict> conflicts;
    for (const RowKey key : m_conflicts) {
        const KeyRecord record = Record(key);
        conflicts.push_back(
            {"[" + std::string(record.targetSection) + "] " + std::string(record.keyName),
             PendingLine(record), LineInSettings(m_store, key, m_settingsFiles)});
    }
    if (!conflicts.empty() && !m_services.prompts.ResolveConflicts(conflicts)) {
        return false;
    }
    for (std::size_t at = 0; at < conflicts.size(); ++at) {
        if (conflicts[at].takesTheirs) {
            TakeFromSettings(m_store, m_conflicts[at], m_settingsFiles);
            m_listener->OnKeyChanged(m_conflicts[at]);
        }
    }
    m_conflicts.clear();
    return true;
}

// What was written is what later changes are told by. A changed redirection leads to other values.
void EditorSession::AfterSave() {
    SettingsFiles now = ReadSettings(m_settingsPath);
    const bool hasSameFiles =
        std::equal(now.Files().begin(), now.Files().end(), m_settingsFiles.Files().begin(),
                   m_settingsFiles.Files().end(),
                   [](const auto& left, const auto& right) { return left.path == right.path; });
    if (!hasSameFiles) {
        for (const RowKey key :
             tamarind::TakeOutsideChanges(m_store, m_settingsFiles, now).changed) {
            m_listener->OnKeyChanged(key);
        }
    }
    m_settingsFiles = std::move(now);
    m_listener->OnTargetShown();
}

// The settings' files first: they are what users come back for.
std::vector<std::string> EditorSession::BackedUpFiles() const {
    std::vector<std::string> files;
    for (const SettingsFiles::File& file : m_settingsFiles.Files()) {
        if (IsGivenPath(file.path)) {
            files.push_back(file.path);
        }
    }
    files.push_back(m_dataFilePath);
    return files;
}

std::vector<BackupInfo> EditorSession::Backups(const std::string& file) const {
    const IniSnapshot now = m_services.files.Read(file);
    std::vector<BackupInfo> backups;
    for (const BackupFile& backup : m_services.files.Files().ListBackups(file)) {
        const IniSnapshot then = m_services.files.Read(backup.path);
        backups.push_back({backup.path, backup.date, backup.size, backup.isFirst,
                           CompareBackup(*then.document, *now.document).size()});
    }
    return backups;
}

std::vector<BackupDifference> EditorSession::BackupDifferences(const std::string& file,
                                                               const std::string& backup) const {
    return CompareBackup(*m_services.files.Read(backup).document,
                         *m_services.files.Read(file).document);
}

// What waits to be saved into a settings file goes on waiting, on top of what the file says then.
bool EditorSession::RestoreBackup(const std::string& file, const std::string& backup) {
    const bool isDataFile = EqualsIgnoreCase(file, m_dataFilePath);
    if (isDataFile && !MayLeaveFiles()) {
        return false;
    }
    FileSystem& disk = m_services.files.Files();
    const FileContent content = disk.Read(backup, FileSystem::kMaxFileBytes);
    if (content.error != FileError::None) {
        ReportUnreadable(backup, content.error);
        return false;
    }
    const ProfileResult result = {disk.ReplaceWithBackup(file, content.bytes), IniEdit::Unchanged};
    if (!result.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, file, result);
        return false;
    }
    m_services.prompts.ShowMessage(MessageIcon::Information, Text(text::kRestored));
    if (!isDataFile) {
        TakeOutsideChanges(true);
    } else if (LoadDataFile(m_dataFilePath)) {
        ShowSettings(ReadSettings(m_settingsPath));
        CreateFavoritesList();
    }
    return true;
}

}  // namespace tamarind
