#pragma once

#include <string>
#include <string_view>
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

private:
    CallError ListFiles(std::vector<FolderEntry>& files);
    std::vector<BackupFile> Sort(const std::vector<FolderEntry>& files);
    bool IsNewest(const std::vector<BackupFile>& backups, const std::string& bytes);
    CallError Write(const std::string& name, const std::string& bytes);
    void Trim(const std::vector<BackupFile>& earlier);

    FileSteps& m_steps;
    std::string m_folder;
    std::string m_stem;  // of the file's name, which the names of the backups begin with
    std::string m_extension;
};

}  // namespace tamarind
