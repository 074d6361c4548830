#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/files/FileSteps.h"

namespace tamarind {

class Backups;

// Replaces files so that at every moment a whole copy of the old content or of the new one is on
// the disk, whatever fails and whenever the program or the machine stops, and so that nothing is
// replaced but what was expected, whoever else writes. What is beside a file meanwhile, and what
// becomes of it after a crash: Leftovers.
class SafeReplace {
public:
    explicit SafeReplace(FileCalls& calls) : m_steps(calls) {}

    // A file that another program holds for writing is waited for.
    FileBytes Read(const std::string& path, std::uint64_t maxBytes);

    ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                           const FileState& expected, Backup backup);
    FileError Check(const std::string& path);
    std::vector<BackupFile> ListBackups(const std::string& path);

    // Whether a replacement of the file has been interrupted or is going on, or nobody can tell.
    bool MayHaveLeftovers(const std::string& path);

    // Waits for a replacement that is going on, and puts the file back after an interrupted one.
    FileError Recover(const std::string& path);

    // Null after three seconds in which another copy of the program had one of the files.
    std::shared_ptr<FileLock> Lock(const std::vector<std::string>& paths);

private:
    // What a replacement is made of. The paths are final ones.
    struct Job {
        const std::string& path;
        const std::string& bytes;
        const std::string& expected;
        Backup backup;
        std::string temporary;
    };

    // The file behind all links. For one that does not exist: where it would be, with NotFound.
    FileFacts Locate(const std::string& path);
    FileFacts LocateNew(const std::string& path);
    std::shared_ptr<FileLock> LockFinal(const std::string& finalPath);
    ReplaceResult ExchangeLocked(const std::string& path, const std::string& bytes,
                                 const FileState& expected, Backup backup);
    CallError Create(const std::string& path, const std::string& bytes);
    ReplaceResult ReplaceOld(const Job& job);
    CallError Compare(const Job& job, std::unique_ptr<HeldFile>& held);
    CallError TryExchange(const Job& job, const std::string& old);
    CallError MoveOver(const Job& job, Backups* backups);
    ReplaceResult LookAside(const Job& job, const std::string& old, Backups& backups, bool isKept);
    CallError OverwriteLinked(const Job& job);
    // `located` is the error of Locate: what is left means one thing beside the file and another
    // in its place.
    CallError FinishInterrupted(const std::string& path, CallError located);

    FileSteps m_steps;
    std::map<std::string, std::weak_ptr<FileLock>> m_locks;  // by final path
};

}  // namespace tamarind
