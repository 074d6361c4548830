#pragma once

#include <string>
#include <vector>

#include "core/files/FileSteps.h"

namespace tamarind {

// The earlier states of one file, in a folder beside it that its user finds: for "Wincmd.ini" it is
// "Wincmd.ini backups" with files like "Wincmd (2026-11-21 06.45.12).ini". The first one,
// "Wincmd (first, 2026-11-21 06.45.12).ini", stays for good, and of the others the last ten.
class Backups {
public:
    Backups(FileSteps& steps, const std::string& path);

    // Newest first; empty without any. A date beyond tomorrow is that of a clock gone wrong and
    // counts as the oldest.
    std::vector<BackupFile> List();

    // Makes a backup of that content, unless the newest one has the same. Old ones that cannot be
    // deleted are no error.
    CallError Keep(const std::string& bytes);

    // Whether there is one of that content.
    bool Has(const std::string& bytes);

    // Gets ready for the file itself, which holds `bytes`, to become a backup: a replacement moves
    // it to OldPath, and Adopt makes a backup of it. `isNeeded`: false where it is the newest one,
    // put back by somebody.
    CallError Prepare(const std::string& bytes, bool& isNeeded);
    std::string OldPath(const std::string& bytes) const;

    // Moves any file into the backups as the newest, which `name` gets the path of.
    CallError Adopt(const std::string& path, std::string& name);

    // The folder, with a closing separator, and what the paths of all backups begin with.
    const std::string& Folder() const { return m_folder; }
    std::string NameStart() const { return m_folder + m_stem; }

private:
    struct Entry {
        BackupFile file;
        FileStamp stamp;
        int number = 1;  // among those of the same second
        bool isBelieved = true;
    };

    CallError Load();
    CallError ListFiles(std::vector<FolderEntry>& files);
    std::vector<Entry> Sort(const std::vector<FolderEntry>& files);
    bool IsNewest(const std::string& bytes);
    std::string NewName();
    void Trim();

    FileSteps& m_steps;
    std::string m_path;
    std::string m_folder;
    std::string m_stem;  // of the file's name, which the names of the backups begin with
    std::string m_extension;
    bool m_isLoaded = false;
    std::vector<Entry> m_earlier;  // if it is
};

}  // namespace tamarind
