#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/FileSteps.h"

namespace tamarind {

// Replaces files so that at every moment a whole copy of the old content or of the new one is on
// the disk, whatever fails and whenever the program or the machine stops.
//
// Meanwhile these names are in use: "<name>.~new-<number>" for what is going to replace the file,
// "<name>.~old", in the folder of the backups if it becomes one, for what is being replaced, and
// "<name>.~whole" for the old content while a file with several hard links is overwritten. What a
// crash leaves under them is put back or deleted by the next read or replacement.
class SafeReplace {
public:
    explicit SafeReplace(FileCalls& calls) : m_steps(calls) {}

    FileError Replace(const std::string& path, const std::string& bytes, Backup backup);
    FileError Check(const std::string& path);
    std::vector<BackupFile> ListBackups(const std::string& path);

    // Whether a replacement of the file has been interrupted or is going on, or nobody can tell.
    bool MayHaveLeftovers(const std::string& path);

    // Waits for a replacement that is going on, and puts the file back after an interrupted one.
    FileError Recover(const std::string& path);

    // Null after three seconds in which another copy of the program had the file.
    std::shared_ptr<FileLock> Lock(const std::string& path);

private:
    // The file behind all links. For one that does not exist: where it would be, with NotFound.
    FileFacts Locate(const std::string& path);
    FileFacts LocateNew(const std::string& path);
    std::shared_ptr<FileLock> LockFinal(const std::string& finalPath);
    CallError ReplaceLocked(const std::string& path, const std::string& bytes, Backup backup);
    CallError ReplaceOld(const std::string& path, const std::string& bytes, Backup backup);
    CallError Exchange(const std::string& path, const std::string& temporary,
                       const std::string& old);
    CallError MoveOver(const std::string& path, const std::string& temporary, bool isKept);
    CallError OverwriteLinked(const std::string& path, const std::string& bytes, Backup backup);
    // `located` is the error of Locate: what is left means one thing beside the file and another
    // in its place.
    CallError FinishInterrupted(const std::string& path, CallError located);
    CallError PutBackOld(const std::string& path);
    CallError RestoreWhole(const std::string& path);

    FileSteps m_steps;
    std::map<std::string, std::weak_ptr<FileLock>> m_locks;  // by final path
};

}  // namespace tamarind
