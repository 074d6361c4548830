// The part of EditorSession that keeps what it shows and the files on disk together.
#include <algorithm>
#include <utility>

#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/KeyStates.h"
#include "model/program/StringTable.h"
#include "model/session/EditorSession.h"

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
    const WriteResult result = {
        m_services.files.Files().CheckReplace(path), IniEdit::Unchanged, {}};
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

SettingsFiles EditorSession::ReadSettingsAgain() const {
    return SettingsFiles::ReadAgain(
        [this](const std::string& path) { return m_services.files.Read(path); },
        m_services.environment, m_settingsFiles);
}

OutsideCheck EditorSession::CheckOutsideChanges() {
    if (m_isBusy || m_settingsFiles.IsEmpty()) {
        return OutsideCheck::Taken;
    }
    SettingsFiles now = ReadSettingsAgain();
    const std::vector<SettingsFiles::File>& files = now.Files();
    const bool isHeld =
        std::any_of(files.begin(), files.end(),
                    [](const SettingsFiles::File& file) { return file.error == FileError::InUse; });
    const bool isSettled =
        std::all_of(files.begin(), files.end(), [](const auto& file) { return file.isSettled; });
    if (isHeld || (!isSettled && !now.IsSameAs(m_settingsFiles))) {
        return OutsideCheck::LookAgain;
    }
    TakeOutsideChanges(std::move(now));
    ReportGone();
    return ResolveConflicts() ? OutsideCheck::Taken : OutsideCheck::PutOff;
}

void EditorSession::TakeOutsideChanges(SettingsFiles now) {
    if (!now.IsSameAs(m_settingsFiles)) {
        const OutsideChanges changes = tamarind::TakeOutsideChanges(m_store, m_settingsFiles, now);
        m_settingsFiles = std::move(now);
        OnRecordsChanged(changes, {});
    }
}

// Once, until all files are there again.
void EditorSession::ReportGone() {
    std::string gone;
    for (const SettingsFiles::File& file : m_settingsFiles.Files()) {
        if (file.IsGone()) {
            gone += "\n\n" + file.path;
        }
    }
    const bool wasTold = std::exchange(m_isGoneTold, !gone.empty());
    if (!gone.empty() && !wasTold) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kSettingsGone) + gone);
    }
}

void EditorSession::OnRecordsChanged(const OutsideChanges& changes,
                                     const std::vector<RowKey>& saved) {
    m_editor.Forget(changes.changed);
    for (const std::vector<RowKey>& keys : {changes.changed, saved}) {
        for (const RowKey key : keys) {
            m_listener->OnKeyChanged(key);
        }
    }
    m_conflicts.insert(m_conflicts.end(), changes.conflicts.begin(), changes.conflicts.end());
    m_listener->OnTargetShown();
    m_listener->OnCommandsChanged();
}

// Some may have been undone meanwhile, or found twice.
bool EditorSession::HasConflicts() {
    std::sort(m_conflicts.begin(), m_conflicts.end());
    m_conflicts.erase(std::unique(m_conflicts.begin(), m_conflicts.end()), m_conflicts.end());
    std::erase_if(m_conflicts, [this](RowKey key) { return !m_store.IsPending(key); });
    return !m_conflicts.empty();
}

// False: the user wants to decide later. No command comes in between: the keys stay pending.
bool EditorSession::ResolveConflicts() {
    if (!HasConflicts()) {
        return true;
    }
    std::vector<ValueConflict> conflicts;
    for (const RowKey key : m_conflicts) {
        const KeyRecord record = Record(key);
        conflicts.push_back(
            {"[" + std::string(record.targetSection) + "] " + std::string(record.keyName),
             PendingLine(record), LineInSettings(m_store, key, m_settingsFiles)});
    }
    const bool wasBusy = std::exchange(m_isBusy, true);
    const bool isDecided = m_services.prompts.ResolveConflicts(conflicts);
    m_isBusy = wasBusy;
    if (!isDecided) {
        return false;
    }
    std::vector<RowKey> taken;
    for (std::size_t at = 0; at < conflicts.size(); ++at) {
        if (conflicts[at].takesTheirs) {
            TakeFromSettings(m_store, m_conflicts[at], m_settingsFiles);
            m_store.ForEachTwin(m_conflicts[at], [&](RowKey key) { taken.push_back(key); });
        }
    }
    m_conflicts.clear();
    OnRecordsChanged({taken, {}}, {});
    return true;
}

bool EditorSession::MayMakeAnew(const std::string& path) {
    const bool wasBusy = std::exchange(m_isBusy, true);
    const Answer answer = m_services.prompts.Ask(Text(text::kMakeFileAnew) + "\n\n" + path);
    m_isBusy = wasBusy;
    return answer == Answer::Yes;
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
    const WriteResult result = {
        disk.Replace(file, content.bytes, Backup::Yes), IniEdit::Unchanged, {}};
    if (!result.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, file, result);
        return false;
    }
    m_services.prompts.ShowMessage(MessageIcon::Information, Text(text::kRestored));
    if (!isDataFile) {
        TakeOutsideChanges(ReadSettingsAgain());
        ResolveConflicts();
    } else if (LoadDataFile(m_dataFilePath)) {
        ShowSettings(ReadSettings(m_settingsPath));
        CreateFavoritesList();
    }
    return true;
}

}  // namespace tamarind
