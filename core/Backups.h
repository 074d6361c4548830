#pragma once

#include <string>
#include <vector>

#include "core/FileSteps.h"

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

    // Reads the folder, makes it if need be, and finishes what a crash has left in it.
    CallError PutInOrder();

    // Gets ready for the file itself to become a backup: a replacement moves it to OldName, and
    // Adopt gives it its name. `isNeeded`: false where it is the newest one, put back by somebody.
    CallError Prepare(bool& isNeeded);
    std::string OldName() const;
    CallError Adopt();

private:
    struct Entry {
        BackupFile file;
        FileStamp stamp;
        int number = 1;  // among those of the same second
        bool isBelieved = true;
    };

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
    std::vector<Entry> m_earlier;  // as of the last PutInOrder
};

}  // namespace tamarind
