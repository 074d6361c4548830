#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/ini/IniFiles.h"

namespace tamarind {

// One save over several INI files that other programs may write at the same time. It goes in
// rounds:
//
//   do {
//       Begin(paths)               keeps other copies of this program away
//       Read(path)                 reads each file once per round
//       Edit(path, edit)           replaces exactly what was read
//   } while (some Edit said isAgain);
//
// If another program has changed a file between Read and Edit, the next round begins with what that
// program wrote, so that nobody's changes are lost. No lock is held between rounds: questions to
// the user belong there, after Pause. Used by SettingsWriter, WriteDescriptions and EditIniFile.
class IniTransaction {
public:
    // After this many rounds that ended with a file that had changed again, Begin gives up.
    static constexpr int kMaxRounds = 5;

    // With Backup::Yes the state of each file before its first edit becomes a backup.
    IniTransaction(IniFiles& files, Backup backup) : m_files(files), m_backup(backup) {}

    // Begins a round on these files and forgets what the last one has read. InUse: another copy of
    // the program has one of the files for too long. KeepsChanging: after kMaxRounds.
    FileError Begin(const std::vector<std::string>& paths);

    // Whether this round has locked all of these files.
    bool Holds(const std::vector<std::string>& paths) const;

    // The file as this round has read it, or as Edit has left it. Errors are in the snapshot.
    IniSnapshot Read(const std::string& path);

    // If the file is missing, it is made from these bytes instead of from an empty file.
    void MakeFrom(const std::string& path, std::string bytes);

    // Lets `edit` change the file and replaces it, or leaves it if nothing differs. With `isAgain`
    // another program has changed the file, or holds it open while its own text waits in a backup;
    // nothing is lost, and another round is needed. `result` is final if `isAgain` is false.
    struct Written {
        WriteResult result;
        bool isAgain = false;
        bool hasBackup = false;  // the former file is among the backups
    };
    Written Edit(const std::string& path, const std::function<IniEdit(IniDocument&)>& edit);

    // Paths of the backups with another program's text that was not merged into the file yet,
    // separated by commas; empty if there are none.
    std::string AsideOf(const std::string& path) const;

    // Unlocks the files before a question to the user, and counts rounds from zero again.
    void Pause();

private:
    // A file as this round has read it.
    struct Entry {
        FileError error = FileError::None;
        IniEdit refused = IniEdit::Unchanged;  // why two texts could not be merged
        FileState onDisk;
        std::shared_ptr<const IniDocument> document;  // what is edited
    };
    // What another program has written in the middle of a replacement. It was found in the file
    // that was moved aside, so it has to be merged into the next edit: the round edits `base`, plus
    // what has changed in the file since it held `written`.
    struct Unmerged {
        std::string base;
        FileState written;
        std::string aside;
        std::vector<std::string> former;       // backups whose texts are in `base`
        IniEdit refused = IniEdit::Unchanged;  // why `base` lacks something
    };

    // Reads the file on the first call in a round.
    Entry& EntryOf(const std::string& path);
    IniEdit Merge(IniDocument& base, const FileState& from, const FileState& to) const;
    void DeleteFormer(const std::string& path);
    // Notes an Unmerged for the next round. `written` is what the file was left with.
    void Remember(const std::string& path, const Entry& entry, const FileState& written,
                  ReplaceResult&& replaced);

    IniFiles& m_files;
    const Backup m_backup;
    std::shared_ptr<FileLock> m_lock;
    std::vector<std::string> m_locked;
    std::map<std::string, Entry> m_entries;
    std::map<std::string, Unmerged> m_unmerged;
    std::map<std::string, std::string> m_madeFrom;
    std::map<std::string, bool> m_isBackedUp;
    std::set<std::string> m_haveBackups;  // files that were there to be backed up
    int m_changes = 0;
};

// Three-way merge: applies the changes between `from` and `to` to `base`. Keys that `to` has and
// `from` has not, or has with another value, are set; keys that only `from` has are deleted.
// Comments and order of `base` stay. If `base` cannot take one of the changes, the result is why,
// and it has all the others. Example:
//
//   from: a=1 b=1    to: a=2 b=1 c=1    base: a=1 b=5    gives    a=2 b=5 c=1
IniEdit MergeChanges(IniDocument& base, const IniDocument& from, const IniDocument& to);

}  // namespace tamarind
