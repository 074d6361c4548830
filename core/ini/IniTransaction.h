#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/ini/IniFiles.h"

namespace tamarind {

// One save over INI files that other programs may write at the same time. It goes in rounds: Begin
// keeps other copies of this program away, Read reads each file once, Edit replaces exactly what
// was read. Where another program was faster, Edit asks for another round, which begins with what
// that program wrote. Nothing is held between rounds, so questions to the user belong there.
class IniTransaction {
public:
    // Rounds that end with a file that has changed again, before Begin gives up.
    static constexpr int kMaxRounds = 5;

    // With a backup the state of each file before the first edit is kept.
    IniTransaction(IniFiles& files, Backup backup) : m_files(files), m_backup(backup) {}

    // Begins a round on these files and forgets what the round before has read. InUse: another copy
    // of the program has one of them; KeepsChanging: another program writes them again and again.
    FileError Begin(const std::vector<std::string>& paths);

    // Whether the round keeps other copies of the program away from all of these files.
    bool Holds(const std::vector<std::string>& paths) const;

    // The file as this round has read it, or as Edit has left it.
    IniSnapshot Read(const std::string& path);

    // Makes a missing file of these bytes rather than of nothing.
    void MakeFrom(const std::string& path, std::string bytes);

    // Changes the file and replaces it, or leaves it where nothing differs. With isAgain it has
    // been changed by another program, or is held by one whose text is aside; nothing is lost, and
    // another round is needed.
    struct Written {
        WriteResult result;
        bool isAgain = false;
    };
    Written Edit(const std::string& path, const std::function<IniEdit(IniDocument&)>& edit);

    // The backups with texts of another program that have not been brought together with ours yet,
    // with commas between them; empty for none.
    std::string AsideOf(const std::string& path) const;

    // Gives the files back before a question is asked; rounds are counted anew from here.
    void Pause();

private:
    // A file in this round.
    struct Entry {
        FileError error = FileError::None;
        IniEdit refused = IniEdit::Unchanged;  // why two texts could not be brought together
        FileState onDisk;
        std::shared_ptr<const IniDocument> document;  // what is edited
        bool isSettled = true;
    };
    // A replacement that another program has come in between: what is to be edited next instead of
    // the file, and what the file was left with then.
    struct Unmerged {
        std::string base;
        FileState written;
        std::string aside;
        std::vector<std::string> former;       // backups whose texts are in `base`
        IniEdit refused = IniEdit::Unchanged;  // why `base` lacks something
    };

    Entry& EntryOf(const std::string& path);
    IniEdit Merge(IniDocument& base, const FileState& from, const FileState& to) const;
    void DeleteFormer(const std::string& path);
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
    int m_changes = 0;
};

// Brings what differs between two states of a file into a third: keys that `to` has and `from` has
// not, or has with another value, are set, and keys that `to` has no more are deleted. Comments and
// order stay those of `base`. Refused where `base` cannot take one of them; it then has the others.
IniEdit MergeChanges(IniDocument& base, const IniDocument& from, const IniDocument& to);

}  // namespace tamarind
