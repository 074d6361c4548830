#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/files/BackupDifferences.h"
#include "model/files/SavePreview.h"
#include "model/files/SettingsFiles.h"
#include "model/files/SettingsWriter.h"
#include "model/keys/KeyEditor.h"
#include "model/program/TotalCommander.h"
#include "model/session/KeySelection.h"
#include "model/session/LoadProgress.h"
#include "model/session/OpenDataFile.h"
#include "model/session/UndescribedCategories.h"
#include "model/session/Workplace.h"

namespace tamarind {

class SettingsListener {
public:
    virtual ~SettingsListener() = default;
    virtual void OnSettingsFileChanged() {}  // another settings file is open
    virtual void OnSettingsRead() {}         // its sections may be in other files than before
};

// What came of a look at the files.
enum class OutsideCheck {
    Taken,      // the records are as the files are
    PutOff,     // the user wants to decide about a conflict later
    LookAgain,  // another program is still writing: to be asked again in half a second
};

// The open settings file with those that its sections are redirected to: reading them, what other
// programs write into them, saving, backups.
class OpenSettings final : private SaveQuestions {
public:
    OpenSettings(Workplace& workplace, KeyStore& store, KeyEditor& editor, KeySelection& selection,
                 OpenDataFile& dataFile, UndescribedCategories& undescribed);

    Listeners<SettingsListener>& Watchers() { return m_listeners; }
    LoadProgress& Progress() { return m_progress; }

    // Empty or the MissingValueMarker: none.
    const std::string& Path() const { return m_path; }
    const SettingsFiles& Files() const { return m_files; }
    // Where settings files are asked for: Total Commander's folder, or else that of the open one.
    std::string Folder() const;
    // The status bar's text of the current key's section and file.
    std::string TargetPanel() const;

    // Makes a settings file current, whose keys the open data file describes: brings every record
    // up to date with it and shows the root.
    SettingsFiles Read(const std::string& path) const;
    void Show(const std::string& path, SettingsFiles settings);

    // Whether a key waits to be saved: one whose state is pending, whatever it comes to.
    bool IsModified() const { return m_store.HasPending(); }

    // Writes all pending changes, and restarts Total Commander if the own settings ask for it. A
    // notice says what was done. On a failure, which a message explains, everything is still
    // pending.
    bool SaveToSettingsFile();
    // The same, and restarts it in any case. When a Total Commander that has run all the time ends,
    // it writes what it holds: keys that were saved meanwhile are saved once more after that.
    bool SaveAndRestart();
    // What a save would do now.
    SavePreview Preview() const { return PreviewSave(m_store, m_files); }
    // Asks whether to save what is pending, if anything is. False: the user cancelled, or the save
    // failed; what was about to happen must not.
    bool AskSaveSettings();
    bool IsTotalCommanderRunning() const { return m_totalCommander.IsRunning(); }

    // Takes what other programs have changed in the settings meanwhile. What waits to be saved
    // stays; where both changed a key the user chooses, now or at a save: who has put the choice
    // off is asked again only at another conflict. What is gone is told once, and its keys stay
    // until it is there again.
    OutsideCheck CheckOutsideChanges();
    // The same at once, after this program has written one of the files in another way than saving.
    void TakeOwnWrite() { TakeOutsideChanges(ReadAgain()); }

    // The files that have backups, or may have: the settings' and the data file. Of one of them:
    // its backups, the newest first, what a backup says of its keys, and how to bring one back;
    // the file that it replaces is backed up first. False, after a message: it stays as it is.
    std::vector<std::string> BackedUpFiles() const;
    std::vector<BackupInfo> Backups(const std::string& file) const;
    std::vector<BackupDifference> BackupDifferences(const std::string& file,
                                                    const std::string& backup) const;
    bool RestoreBackup(const std::string& file, const std::string& backup);

private:
    bool Save(bool restarts);
    SaveResult WriteSettings();
    SettingsFiles ReadAgain() const;
    OutsideChanges TakeOutsideChanges(SettingsFiles now);
    void TakeRestored();
    void TellSaved(const SaveResult& result, bool hasRestarted);
    void ReportGone();
    void ReportTroubles() const;
    void OnRecordsChanged(const OutsideChanges& changes,
                          const std::vector<KeyNumber>& saved) override;
    bool HasConflicts() override;
    bool ResolveConflicts() override;
    bool MayMakeAnew(const std::string& path) override;

    Workplace& m_workplace;
    KeyStore& m_store;
    KeyEditor& m_editor;
    KeySelection& m_selection;
    OpenDataFile& m_dataFile;
    UndescribedCategories& m_undescribed;
    TotalCommander m_totalCommander;
    LoadProgress m_progress;
    Listeners<SettingsListener> m_listeners;
    std::string m_path;
    SettingsFiles m_files;               // as last read or written
    std::vector<KeyNumber> m_conflicts;  // still to be decided
    bool m_arePutOff = false;            // all of these, until a save or the next conflict
    bool m_isGoneTold = false;
    // The keys of the last save: what was written, and the lines that they had before it.
    std::vector<HistoryEntry> m_lastSaved;
    std::map<KeyNumber, std::string> m_linesBeforeSave;
    std::set<KeyNumber> m_savedAgain;  // those of them that are saved once more now
};

}  // namespace tamarind
