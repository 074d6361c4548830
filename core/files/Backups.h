#pragma once

#include <string>
#include <vector>

#include "core/files/FileSteps.h"

namespace tamarind {

// The earlier states of one file, in a folder beside it where its user finds them:
//
//   Wincmd.ini                                                the file
//   Wincmd.ini backups\Wincmd (first, 2026-11-21 06.45.12).ini   kept for good
//   Wincmd.ini backups\Wincmd (2026-11-22 10.01.00).ini
//   Wincmd.ini backups\Wincmd (2026-11-22 10.01.00) 2.ini        of the same second
//
// Besides the first one, the last ten are kept. Other files in the folder are left alone. Used by
// SafeReplace and Leftovers under the lock of the file; this class takes no lock itself.
class Backups {
public:
    // `path` is the final path of the file. `steps` must outlive this object.
    Backups(FileSteps& steps, const std::string& path);

    // Newest first; empty if there are none or the folder cannot be read. A backup dated beyond
    // tomorrow comes from a clock gone wrong and counts as the oldest.
    std::vector<BackupFile> List();

    // Makes a backup with the content `bytes`, unless the newest one has the same content. Then
    // deletes the backups beyond the last ten; one that cannot be deleted is no error.
    CallError Keep(const std::string& bytes);

    // Whether any backup has exactly this content. False if the folder cannot be read.
    bool Has(const std::string& bytes);

    // Prepares for the file itself, which holds `bytes`, to become a backup: a replacement moves it
    // to OldPath, and Adopt then makes a backup of it. The folder exists afterwards unless there is
    // an error. `isNeeded` comes back false if the newest backup has this content already, because
    // somebody has copied it back over the file.
    CallError Prepare(const std::string& bytes, bool& isNeeded);
    // Where a replacement moves the file on its way into the backups; in their folder.
    std::string OldPath(const std::string& bytes) const;

    // Moves any file into the backups as the newest one; `name` gets its new path. On an error the
    // file stays where it was.
    CallError Adopt(const std::string& path, std::string& name);

    // The folder, with a closing separator.
    const std::string& Folder() const { return m_folder; }
    // The folder and the stem: what the paths of all backups and of OldPath begin with.
    std::string NameStart() const { return m_folder + m_stem; }

private:
    struct Entry {
        BackupFile file;
        FileStamp stamp;
        int number = 1;  // among those of the same second
        bool isBelieved = true;
    };

    // Reads the folder into `m_earlier`, unless that is done already, and creates it if it is
    // missing.
    CallError Load();
    // FolderMissing if there are no backups yet.
    CallError ListFiles(std::vector<FolderEntry>& files);
    // Drops the files that are no backups and sorts the others, the newest first.
    std::vector<Entry> Sort(const std::vector<FolderEntry>& files);
    bool IsNewest(const std::string& bytes);
    // The path for a backup made now: marked as the first one if there is none yet.
    std::string NewName();
    // Deletes what is too old. To be called after a backup was added, while `m_earlier` is still
    // the list without it.
    void Trim();

    FileSteps& m_steps;
    std::string m_path;
    std::string m_folder;
    std::string m_stem;  // of the file's name, which the names of the backups begin with
    std::string m_extension;
    bool m_isLoaded = false;
    std::vector<Entry> m_earlier;  // valid if m_isLoaded
};

}  // namespace tamarind
