#include "model/session/OpenSettings.h"

#include <algorithm>
#include <utility>

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/KeyStates.h"
#include "model/keys/KeyList.h"
#include "model/program/StringTable.h"

namespace tamarind {
OpenSettings::OpenSettings(Workplace& workplace, KeyStore& store, KeyEditor& editor,
                           KeySelection& selection, OpenDataFile& dataFile,
                           UndescribedCategories& undescribed)
    : m_workplace(workplace),
      m_store(store),
      m_editor(editor),
      m_selection(selection),
      m_dataFile(dataFile),
      m_undescribed(undescribed),
      m_totalCommander(workplace.Services().programs, workplace.Files(),
                       workplace.Services().environment),
      m_progress(workplace.Disk()) {}

std::string OpenSettings::Folder() const {
    const std::string folder = m_workplace.Services().environment.Variable("Commander_Path");
    if (!folder.empty()) {
        return AddBackslash(folder);
    }
    return std::string(IsGivenPath(m_path) ? FolderOfPath(m_path) : "");
}

std::string OpenSettings::TargetPanel() const {
    const auto key = m_selection.Rows().CurrentKey();
    if (!key) {
        return {};
    }
    const std::string_view section = m_store.TargetSection(*key);
    std::string panel = m_workplace.Text(text::kTargetSection) + "  [" + std::string(section) + "]";
    const std::size_t file = m_files.FileOf(section, m_store.KeyName(*key));
    if (file != 0) {
        panel += "  " + std::string(FileNameOfPath(m_files.Files()[file].path));
    }
    // Among all keys nothing else tells it, and many names stand in several categories.
    if (m_selection.SelectedNode() == kRootNode && m_store.IsDescribed(*key)) {
        panel += "  " + std::string(m_store.Category(*key));
    }
    return panel;
}

SettingsFiles OpenSettings::Read(const std::string& path) const {
    return SettingsFiles::Read(m_workplace.Files(), m_workplace.Services().environment, path);
}

SettingsFiles OpenSettings::ReadAgain() const {
    return SettingsFiles::ReadAgain(
        [this](const std::string& path) { return m_workplace.Files().Read(path); },
        m_workplace.Services().environment, m_files);
}

void OpenSettings::Show(const std::string& path, SettingsFiles settings) {
    m_undescribed.Clear();  // while the former files are there
    m_path = path;
    m_listeners.Tell(&SettingsListener::OnSettingsFileChanged);
    m_files = std::move(settings);
    m_conflicts.clear();
    m_lastSaved.clear();
    m_editor.ClearHistory();
    m_isGoneTold = false;
    m_progress.Begin();
    const auto advance = [this] { m_progress.Advance(); };
    if (!m_dataFile.AreKeysRead()) {
        m_dataFile.ReadKeys(advance);
    }
    DeriveKeyStates(m_store, m_files, advance);
    m_undescribed.Take(m_files);
    m_progress.End();
    m_selection.ShowRoot();
    ReportTroubles();
}

// What stands in the way of a save is said when the file is opened, before there is anything to
// lose.
void OpenSettings::ReportTroubles() const {
    const Messages messages(m_workplace);
    for (const SettingsFiles::File& file : m_files.Files()) {
        if (file.error == FileError::None) {
            const WriteResult result = {
                m_workplace.Disk().CheckReplace(file.path), IniEdit::Unchanged, {}};
            if (!result.Succeeded()) {
                messages.ReportFailure(text::kCannotSaveFile, file.path, result);
            }
        } else if (!IsMissing(file.error) && IsGivenPath(file.path)) {
            messages.ReportUnreadable(file.path, file.error);
        }
    }
    for (const std::string& section : m_files.Loops()) {
        m_workplace.Prompts().ShowMessage(
            MessageIcon::Exclamation,
            m_workplace.Text(text::kRedirectionLoop) + " [" + section + "]");
    }
}

OutsideCheck OpenSettings::CheckOutsideChanges() {
    if (m_workplace.IsBusy() || m_files.IsEmpty()) {
        return OutsideCheck::Taken;
    }
    SettingsFiles now = ReadAgain();
    const std::vector<SettingsFiles::File>& files = now.Files();
    const bool isHeld =
        std::any_of(files.begin(), files.end(),
                    [](const SettingsFiles::File& file) { return file.error == FileError::InUse; });
    const bool isSettled =
        std::all_of(files.begin(), files.end(), [](const auto& file) { return file.isSettled; });
    if (isHeld || (!isSettled && !now.IsSameAs(m_files))) {
        return OutsideCheck::LookAgain;
    }
    TakeOutsideChanges(std::move(now));
    ReportGone();
    const bool isPutOff = (m_arePutOff && HasConflicts()) || !ResolveConflicts();
    return isPutOff ? OutsideCheck::PutOff : OutsideCheck::Taken;
}

OutsideChanges OpenSettings::TakeOutsideChanges(SettingsFiles now) {
    OutsideChanges changes;
    if (!now.IsSameAs(m_files)) {
        changes = tamarind::TakeOutsideChanges(m_store, m_files, now);
        m_files = std::move(now);
        OnRecordsChanged(changes, {});
    }
    return changes;
}

// Once, until all files are there again.
void OpenSettings::ReportGone() {
    std::string gone;
    for (const SettingsFiles::File& file : m_files.Files()) {
        if (file.IsGone()) {
            gone += "\n\n" + file.path;
        }
    }
    const bool wasTold = std::exchange(m_isGoneTold, !gone.empty());
    if (!gone.empty() && !wasTold) {
        m_workplace.Prompts().ShowMessage(MessageIcon::Exclamation,
                                          m_workplace.Text(text::kSettingsGone) + gone);
    }
}

void OpenSettings::OnRecordsChanged(const OutsideChanges& changes,
                                    const std::vector<KeyNumber>& saved) {
    m_undescribed.Take(m_files);
    m_editor.Forget(changes.changed);
    for (const std::vector<KeyNumber>& keys : {changes.changed, saved}) {
        for (const KeyNumber key : keys) {
            m_selection.Rows().TellChanged(key);
        }
    }
    m_conflicts.insert(m_conflicts.end(), changes.conflicts.begin(), changes.conflicts.end());
    m_arePutOff = m_arePutOff && changes.conflicts.empty();
    m_listeners.Tell(&SettingsListener::OnSettingsRead);
    m_workplace.TellCommandsChanged();
}

// Some may have been undone meanwhile, or found twice. A key that is saved once more and has again
// what it had before is none: the user has decided about it.
bool OpenSettings::HasConflicts() {
    std::sort(m_conflicts.begin(), m_conflicts.end());
    m_conflicts.erase(std::unique(m_conflicts.begin(), m_conflicts.end()), m_conflicts.end());
    std::erase_if(m_conflicts, [this](KeyNumber key) {
        return !m_store.IsPending(key) || (m_savedAgain.contains(key) &&
                                           m_linesBeforeSave[key] == LineInSettings(m_store, key));
    });
    return !m_conflicts.empty();
}

// False: the user wants to decide later. No command comes in between: the keys stay pending.
bool OpenSettings::ResolveConflicts() {
    if (!HasConflicts()) {
        return true;
    }
    std::vector<ValueConflict> conflicts;
    for (const KeyNumber key : m_conflicts) {
        const KeyRecord record = m_store.Record(key);
        conflicts.push_back(
            {NameWithSection(record), LineOfState(record), LineInSettings(m_store, key)});
    }
    {
        const Workplace::BusyTime busy(m_workplace);
        m_arePutOff = !m_workplace.Prompts().ResolveConflicts(conflicts);
    }
    if (m_arePutOff) {
        return false;
    }
    std::vector<KeyNumber> taken;
    for (std::size_t at = 0; at < conflicts.size(); ++at) {
        if (conflicts[at].takesTheirs) {
            m_store.Discard(m_conflicts[at]);
            m_store.ForEachTwin(m_conflicts[at], [&](KeyNumber key) { taken.push_back(key); });
        }
    }
    m_conflicts.clear();
    OnRecordsChanged({taken, {}}, {});
    return true;
}

bool OpenSettings::MayMakeAnew(const std::string& path) {
    const Workplace::BusyTime busy(m_workplace);
    return m_workplace.Prompts().Ask(m_workplace.Text(text::kMakeFileAnew) + "\n\n" + path) ==
           Answer::Yes;
}

bool OpenSettings::AskSaveSettings() {
    return !IsModified() ||
           Messages(m_workplace)
               .AskToSave(m_workplace.Text(text::kSaveChangesTo) + "  " + m_path + "\n",
                          [this] { return SaveToSettingsFile(); });
}

bool OpenSettings::SaveToSettingsFile() {
    return Save(m_workplace.OwnSettings().Values().alwaysRestartTC != 0);
}

// Total Commander, once closed, is started again whatever becomes of the save.
bool OpenSettings::Save(bool restarts) {
    if (m_workplace.IsBusy()) {
        return false;
    }
    const Messages messages(m_workplace);
    if (!IsGivenPath(m_path)) {
        messages.Show(MessageIcon::Exclamation, text::kNoSettingsFile);
        return false;
    }
    const auto whileBusy = [this](const auto& act) {
        const Workplace::BusyTime busy(m_workplace);
        m_workplace.TellCommandsChanged();
        return act();
    };
    const std::string& ownSettings = m_workplace.OwnSettings().Path();
    RestartResult closed;
    if (restarts) {
        closed = whileBusy([&] { return m_totalCommander.Close(ownSettings); });
    }
    const SaveResult result = WriteSettings();
    TellSaved(result, restarts);
    RestartResult started;
    if (restarts && (closed.hasClosed || !result.isCancelled)) {
        const char* const switchText =
            m_dataFile.Target() == SettingsTarget::WcxFtp ? " /f=" : " /i=";
        started =
            whileBusy([&] { return m_totalCommander.Start(switchText, m_path, ownSettings); });
    }
    m_workplace.TellCommandsChanged();
    if (!result.failures.empty()) {
        messages.ReportUnsaved(result, m_store);
    }
    if (closed.stillRuns) {
        messages.Show(MessageIcon::Exclamation, text::kTotalCommanderStillRuns);
    }
    if (!started.refusedPath.empty()) {
        m_workplace.Prompts().ShowMessage(
            MessageIcon::Exclamation,
            m_workplace.Text(text::kQuoteInPath) + " " + started.refusedPath);
    }
    return result.Succeeded();
}

SaveResult OpenSettings::WriteSettings() {
    const Workplace::BusyTime busy(m_workplace);
    std::erase_if(m_linesBeforeSave,
                  [this](const auto& line) { return !m_savedAgain.contains(line.first); });
    for (const KeyNumber key : m_store.PendingKeys()) {
        m_linesBeforeSave.try_emplace(key, LineInSettings(m_store, key));
    }
    return SettingsWriter(m_store, m_workplace.Files(), m_workplace.Services().environment, m_files,
                          *this)
        .Save();
}

void OpenSettings::TellSaved(const SaveResult& result, bool hasRestarted) {
    const std::size_t count = result.saved.size();
    if (count == 0) {
        return;
    }
    m_lastSaved.clear();
    for (const KeyNumber key : result.saved) {
        m_lastSaved.push_back(WholeEntry(m_store, key));
    }
    Notice notice;
    notice.text = count == 1 ? m_workplace.Text(text::kOneKeySaved)
                             : m_workplace.Text(text::kKeysSaved, {std::to_string(count)});
    if (result.hasBackup) {
        notice.text += " " + m_workplace.Text(text::kBackupMade);
    }
    if (!hasRestarted && IsTotalCommanderRunning()) {
        notice.text += " " + m_workplace.Text(text::kTotalCommanderWillOverwrite);
        notice.offersRestart = true;
    }
    m_workplace.TellNotice(notice);
}

bool OpenSettings::SaveAndRestart() {
    if (m_workplace.IsBusy()) {
        return false;
    }
    for (const HistoryEntry& entry : m_lastSaved) {
        const HistoryEntry now = WholeEntry(m_store, entry.key);
        if (now.state == entry.state && now.value == entry.value) {
            m_store.SetValue(entry.key, entry.value, PendingStateFor(entry.state), true);
            m_savedAgain.insert(entry.key);
        }
    }
    m_selection.Rows().TellChanges({m_savedAgain.begin(), m_savedAgain.end()});
    const bool isSaved = Save(true);
    m_savedAgain.clear();
    return isSaved;
}

// The settings' files first: they are what users come back for.
std::vector<std::string> OpenSettings::BackedUpFiles() const {
    std::vector<std::string> files;
    for (const SettingsFiles::File& file : m_files.Files()) {
        if (IsGivenPath(file.path)) {
            files.push_back(file.path);
        }
    }
    files.push_back(m_dataFile.Path());
    return files;
}

std::vector<BackupInfo> OpenSettings::Backups(const std::string& file) const {
    IniFiles& files = m_workplace.Files();
    const IniSnapshot now = files.Read(file);
    std::vector<BackupInfo> backups;
    for (const BackupFile& backup : m_workplace.Disk().ListBackups(file)) {
        const IniSnapshot then = files.Read(backup.path);
        backups.push_back({backup.path, backup.date, backup.size,
                           CompareBackup(*then.document, *now.document).size()});
    }
    return backups;
}

std::vector<BackupDifference> OpenSettings::BackupDifferences(const std::string& file,
                                                              const std::string& backup) const {
    return CompareBackup(*m_workplace.Files().Read(backup).document,
                         *m_workplace.Files().Read(file).document);
}

// What waits to be saved into a settings file goes on waiting, on top of what the file says then.
bool OpenSettings::RestoreBackup(const std::string& file, const std::string& backup) {
    const bool isDataFile = EqualsIgnoreCase(file, m_dataFile.Path());
    if (isDataFile && !(AskSaveSettings() && m_dataFile.AskSaveDataFile())) {
        return false;
    }
    const Messages messages(m_workplace);
    FileSystem& disk = m_workplace.Disk();
    const FileContent content = disk.Read(backup, FileSystem::kMaxFileBytes);
    if (content.error != FileError::None) {
        messages.ReportUnreadable(backup, content.error);
        return false;
    }
    const WriteResult result = {
        disk.Replace(file, content.bytes, Backup::Yes), IniEdit::Unchanged, {}};
    if (!result.Succeeded()) {
        messages.ReportFailure(text::kCannotSaveFile, file, result);
        return false;
    }
    messages.Show(MessageIcon::Information, text::kRestored);
    if (!isDataFile) {
        TakeRestored();
    } else if (m_dataFile.LoadDataFile(m_dataFile.Path())) {
        Show(m_path, Read(m_path));
    }
    return true;
}

// What stood before can be had again by undoing: the former values, and the pending changes that
// the user gives up for those of the backup.
void OpenSettings::TakeRestored() {
    const SettingsFiles before = m_files;
    const OutsideChanges changes = TakeOutsideChanges(ReadAgain());
    std::vector<HistoryEntry> former = EntriesOf(m_store, changes.changed, before);
    std::vector<HistoryEntry> pending;
    for (const KeyNumber key : m_conflicts) {
        pending.push_back(WholeEntry(m_store, key));
    }
    ResolveConflicts();
    for (HistoryEntry& entry : pending) {
        if (!m_store.IsPending(entry.key)) {
            former.push_back(std::move(entry));
        }
    }
    m_editor.RecordStep(StepKind::Restore, std::move(former));
    m_workplace.TellCommandsChanged();
}

}  // namespace tamarind
