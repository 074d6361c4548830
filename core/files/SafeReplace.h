#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/files/FileSteps.h"

namespace tamarind {

class Backups;

// Replaces files so that at every moment a whole copy of the old content or of the new one is on
// the disk, whichever step fails and whenever the program or the machine stops; and so that only
// the expected content is ever replaced, whoever else writes the file. Class Leftovers knows what
// stands beside a file meanwhile and what becomes of it after a crash. Used by DiskFileSystem only,
// which describes the results (FileSystem).
class SafeReplace {
public:
    // `calls` must outlive this object.
    explicit SafeReplace(FileCalls& calls) : m_steps(calls) {}

    // As FileCalls::Read; a file that another program has open for writing is waited for.
    FileBytes Read(const std::string& path, std::uint64_t maxBytes);

    // As FileSystem::Exchange, CheckReplace and ListBackups, for paths that can be those of files.
    ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                           const FileState& expected, Backup backup);
    FileError Check(const std::string& path);
    std::vector<BackupFile> ListBackups(const std::string& path);

    // Whether a replacement of the file was interrupted or is going on, or this cannot be found
    // out.
    bool MayHaveLeftovers(const std::string& path);

    // Waits for a replacement that is going on, at most three seconds, and puts the file back after
    // an interrupted one. InUse if the wait was in vain.
    FileError Recover(const std::string& path);

    // As FileSystem::Lock. A file is locked once for this object; all of its locks share that.
    std::shared_ptr<FileLock> Lock(const std::vector<std::string>& paths);

private:
    // The arguments of one replacement, handed from step to step. The paths are final ones.
    struct Job {
        const std::string& path;
        const std::string& bytes;
        const std::string& expected;
        Backup backup;
        std::string temporary;
    };

    // The file after all links. NotFound with the path where the file would be if it does not exist
    // but its folder does; IsFolder or ReadOnly if it cannot be replaced for that reason.
    FileFacts Locate(const std::string& path);
    // The same for a file that does not exist: its folder may be reached through links, too.
    FileFacts LocateNew(const std::string& path);
    // Null after three seconds.
    std::shared_ptr<FileLock> LockFinal(const std::string& finalPath);
    // Exchange under the lock of the file. `path` is the final path.
    ReplaceResult ExchangeLocked(const std::string& path, const std::string& bytes,
                                 const FileState& expected, Backup backup);
    // Changed if somebody else has made the file meanwhile.
    CallError Create(const std::string& path, const std::string& bytes);
    // Replaces the file by the temporary one of the job, and keeps or deletes the old one.
    ReplaceResult ReplaceOld(const Job& job);
    CallError Compare(const Job& job, std::unique_ptr<HeldFile>& held);
    CallError TryExchange(const Job& job, const std::string& old);
    // For file systems without Replace. `backups` is null where no backup is to be made.
    CallError MoveOver(const Job& job, Backups* backups);
    // What was moved to `old` may be something else than expected: keeps it, and reports it. With
    // `isKept` it becomes a backup in any case.
    ReplaceResult LookAside(const Job& job, const std::string& old, Backups& backups, bool isKept);
    // For a file with several hard links. Deletes the temporary file when it is not needed any
    // more.
    CallError OverwriteLinked(const Job& job);
    // Ends an earlier interrupted replacement. `located` is the error of Locate: leftovers mean one
    // thing beside the file and another where the file is missing.
    CallError FinishInterrupted(const std::string& path, CallError located);

    FileSteps m_steps;
    std::map<std::string, std::weak_ptr<FileLock>> m_locks;  // by final path
};

}  // namespace tamarind
