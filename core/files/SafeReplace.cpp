// The steps of a replacement of x.ini:
//
//   1. Write the new content to x.ini.~new-..., flush it and read it back.
//   2. Compare x.ini with what is expected, while a handle keeps other writers out.
//   3. FileCalls::Replace renames x.ini (to its backup or to x.ini.~old-...) and ~new to x.ini. In
//      its middle there is no x.ini, but both contents are whole beside it.
//   4. Look at what was moved aside. The expected content is deleted or becomes a backup. Anything
//      else was written by another program between 2 and 3, and is kept and reported.
//
// Whoever finds a state between two steps, this program or its next start, lets Leftovers end it.
// All steps run under a lock between the copies of the program. Other programs do not know that
// lock, which is why contents are compared.

#include "core/files/SafeReplace.h"

#include <set>

#include "core/files/Backups.h"
#include "core/files/Leftovers.h"
#include "core/text/Digits.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr unsigned kLockMilliseconds = 3000;

// Gives its locks back together; the order does not matter.
class SeveralLocks final : public FileLock {
public:
    std::vector<std::shared_ptr<FileLock>> locks;
};

ReplaceResult Failed(CallError error) {
    return {FileErrorOf(error), {}, {}};
}

}  // namespace

FileFacts SafeReplace::Locate(const std::string& path) {
    FileFacts facts;
    m_steps.Retry([&] {
        facts = m_steps.Calls().Inspect(path);
        return facts.error;
    });
    if (facts.error == CallError::NotFound) {
        return LocateNew(facts.finalPath);
    }
    if (facts.error == CallError::None && facts.isFolder) {
        facts.error = CallError::IsFolder;
    } else if (facts.error == CallError::None && facts.isReadOnly) {
        facts.error = CallError::ReadOnly;
    }
    return facts;
}

FileFacts SafeReplace::LocateNew(const std::string& path) {
    const std::string folder = FolderWithSeparator(path);
    FileFacts facts = m_steps.Calls().Inspect(folder);
    if (facts.error == CallError::None && facts.isFolder) {
        const bool isClosed = FolderWithSeparator(facts.finalPath) == facts.finalPath;
        // If the final path of the folder has no closing separator, the one of `path` is added with
        // the name.
        facts.finalPath += path.substr(folder.size() - (isClosed ? 0 : 1));
        facts.error = CallError::NotFound;
        return facts;
    }
    facts.finalPath = path;
    facts.error =
        IsMissing(facts.error) || !facts.isFolder ? CallError::FolderMissing : facts.error;
    return facts;
}

FileBytes SafeReplace::Read(const std::string& path, std::uint64_t maxBytes) {
    return m_steps.Read(path, maxBytes);
}

std::shared_ptr<FileLock> SafeReplace::Lock(const std::vector<std::string>& paths) {
    std::set<std::string> finalPaths;
    for (const std::string& path : paths) {
        finalPaths.insert(Locate(path).finalPath);
    }
    auto all = std::make_shared<SeveralLocks>();
    for (const std::string& path : finalPaths) {
        all->locks.push_back(LockFinal(path));
        if (!all->locks.back()) {
            return nullptr;
        }
    }
    return all;
}

std::shared_ptr<FileLock> SafeReplace::LockFinal(const std::string& finalPath) {
    std::weak_ptr<FileLock>& held = m_locks[finalPath];
    std::shared_ptr<FileLock> lock = held.lock();
    if (!lock) {
        // The name of a system object cannot hold a path; a hash of it serves, whatever its letter
        // case.
        lock = m_steps.Calls().Lock(
            "TamarindEditor-save-" + PaddedDigits(HashIgnoreCase(finalPath), 16, 16),
            kLockMilliseconds);
        held = lock;
    }
    return lock;
}

ReplaceResult SafeReplace::Exchange(const std::string& path, const std::string& bytes,
                                    const FileState& expected, Backup backup) {
    const FileFacts facts = Locate(path);
    if (facts.error != CallError::None && facts.error != CallError::NotFound) {
        return Failed(facts.error);
    }
    const auto lock = LockFinal(facts.finalPath);
    return lock ? ExchangeLocked(facts.finalPath, bytes, expected, backup)
                : Failed(CallError::Shared);
}

ReplaceResult SafeReplace::ExchangeLocked(const std::string& path, const std::string& bytes,
                                          const FileState& expected, Backup backup) {
    // Asked once more under the lock: another copy of the program may have had the file until now.
    FileFacts facts = Locate(path);
    const CallError unfinished = FinishInterrupted(path, facts.error);
    if (unfinished != CallError::None) {
        return Failed(unfinished);
    }
    if (facts.error == CallError::NotFound) {
        facts = Locate(path);
    }
    const bool isThere = facts.error != CallError::NotFound;
    if (facts.error != CallError::None && isThere) {
        return Failed(facts.error);
    }
    if (isThere != expected.has_value()) {
        return Failed(CallError::Changed);
    }
    if (!isThere) {
        return Failed(Create(path, bytes));
    }
    if (facts.finalPath != path) {
        // It has become a link since then.
        return Failed(CallError::Shared);
    }
    Job job = {path, bytes, *expected, backup, {}};
    const CallError error = m_steps.WriteTemporary(path, bytes, job.temporary);
    if (error != CallError::None) {
        return Failed(error);
    }
    if (facts.links > 1) {
        return Failed(OverwriteLinked(job));
    }
    ReplaceResult result = ReplaceOld(job);
    if (result.error != FileError::None) {
        m_steps.Delete(job.temporary);
    }
    return result;
}

CallError SafeReplace::Create(const std::string& path, const std::string& bytes) {
    const CallError error = m_steps.WriteAndMove(path, bytes, MoveMode::KeepExisting);
    return error == CallError::Exists ? CallError::Changed : error;
}

ReplaceResult SafeReplace::ReplaceOld(const Job& job) {
    Backups backups(m_steps, job.path);
    bool isKept = false;
    CallError error = CallError::None;
    if (job.backup == Backup::Yes) {
        error = backups.Prepare(job.expected, isKept);
    }
    const std::string old = isKept ? backups.OldPath(job.expected)
                                   : LeftoverPath(job.path, LeftoverKind::Old, job.expected);
    if (error == CallError::None) {
        error = m_steps.Retry([&] { return TryExchange(job, old); });
    }
    if (error == CallError::Unsupported) {
        return Failed(MoveOver(job, isKept ? &backups : nullptr));
    }
    if (error == CallError::None) {
        return LookAside(job, old, backups, isKept);
    }
    if (error != CallError::Exists) {
        return Failed(error);
    }
    // Another program has made a file of this name in the moment when there was none.
    ReplaceResult result = LookAside(job, old, backups, true);
    result.error = FileError::Changed;
    result.foreign = result.foreign ? result.foreign : job.expected;
    return result;
}

// None if the file still is what is to be replaced; it stays so while `held` lives. Changed if not.
CallError SafeReplace::Compare(const Job& job, std::unique_ptr<HeldFile>& held) {
    const FileBytes present = m_steps.Calls().Read(job.path, FileSystem::kMaxFileBytes, &held);
    const bool isOther = present.error == CallError::None && present.bytes != job.expected;
    return isOther || present.error == CallError::NotFound ? CallError::Changed : present.error;
}

// One try to put the temporary file in the place of the real one. On an error the old file has its
// name again; if even giving it back has failed, the next read does that. Exists: another file has
// taken the name, and the old one is at `old`.
CallError SafeReplace::TryExchange(const Job& job, const std::string& old) {
    CallError error = CallError::None;
    {
        std::unique_ptr<HeldFile> held;
        error = Compare(job, held);
        if (error != CallError::None) {
            return error;
        }
        error = m_steps.Calls().Replace(job.path, job.temporary, old);
    }
    switch (error) {
        case CallError::None:
        case CallError::Unsupported:
        case CallError::UnableToRemoveOld:
            return error;  // after the last two, both files have their names
        case CallError::NotFound:
            return CallError::Changed;
        case CallError::UnableToMoveNew:
        case CallError::UnableToMoveNewAtAll:
        default:
            // After the first two the old file is at `old`; after other errors nobody says where it
            // is. The move back does nothing if the file is in its place. Source: Microsoft,
            // ReplaceFileW.
            return m_steps.Move(old, job.path, MoveMode::KeepExisting) == CallError::Exists
                       ? CallError::Exists
                       : error;
    }
}

// The old file is overwritten by a rename, so its backup is a copy made before. The handle of the
// comparison must be closed first: Windows renames nothing over a file that is open.
CallError SafeReplace::MoveOver(const Job& job, Backups* backups) {
    CallError error = backups != nullptr ? backups->Keep(job.expected) : CallError::None;
    return error != CallError::None ? error : m_steps.Retry([&] {
        std::unique_ptr<HeldFile> held;
        error = Compare(job, held);
        held.reset();
        return error == CallError::None
                   ? m_steps.Calls().Move(job.temporary, job.path, MoveMode::Overwrite)
                   : error;
    });
}

// A program that had the file open before may have written into it after it was moved aside, or
// have replaced it just before that. Such a text is kept even where no backup was asked for, and so
// is the content that was there before it.
ReplaceResult SafeReplace::LookAside(const Job& job, const std::string& old, Backups& backups,
                                     bool isKept) {
    ReplaceResult result;
    const FileBytes aside = m_steps.Read(old);
    const bool isForeign = aside.error != CallError::None || aside.bytes != job.expected;
    if (!isForeign && !isKept) {
        m_steps.Delete(old);
        return result;
    }
    if (isForeign && isKept) {
        backups.Keep(job.expected);
    }
    // If this fails, it stays where it is, and the next replacement makes a backup of it.
    if (backups.Adopt(old, result.aside) != CallError::None) {
        result.aside = old;
    }
    if (isForeign) {
        result.foreign = aside.bytes;
        if (aside.error != CallError::None) {
            // It is still open in another program. What it becomes cannot be known, but it is kept.
            result.foreign = job.expected;
        }
    }
    return result;
}

// Putting another file in its place would part a file from its other hard links, so it is
// overwritten. This is the only case in which the file itself is not whole for a moment. The copy
// beside it is, and as long as that exists, a torn file gets its content back from it.
CallError SafeReplace::OverwriteLinked(const Job& job) {
    CallError error = CallError::None;
    if (job.backup == Backup::Yes) {
        error = Backups(m_steps, job.path).Keep(job.expected);
    }
    const std::string whole = LeftoverPath(job.path, LeftoverKind::Whole, job.expected);
    if (error == CallError::None) {
        error = m_steps.WriteAndMove(whole, job.expected, MoveMode::Overwrite);
    }
    if (error != CallError::None) {
        m_steps.Delete(job.temporary);
        return error;
    }
    bool isWhole = true;
    error = m_steps.WriteInPlace(job.path, job.bytes, job.expected, isWhole);
    // For as long as the copy exists, the temporary file is what tells a torn file from a new one.
    if (isWhole && m_steps.Delete(whole) == CallError::None) {
        m_steps.Delete(job.temporary);
    }
    return error;
}

bool SafeReplace::MayHaveLeftovers(const std::string& path) {
    const std::string finalPath = Locate(path).finalPath;
    Backups backups(m_steps, finalPath);
    return Leftovers(m_steps, finalPath, backups).MayExist();
}

FileError SafeReplace::Recover(const std::string& path) {
    const std::string finalPath = Locate(path).finalPath;
    const auto lock = LockFinal(finalPath);
    if (!lock) {
        return FileError::InUse;
    }
    return FileErrorOf(FinishInterrupted(finalPath, Locate(finalPath).error));
}

CallError SafeReplace::FinishInterrupted(const std::string& path, CallError located) {
    const bool isMissing = located == CallError::NotFound;
    if (located != CallError::None && located != CallError::ReadOnly && !isMissing) {
        // Whether the file exists decides what becomes of the leftovers, so it has to be known.
        return located;
    }
    Backups backups(m_steps, path);
    return Leftovers(m_steps, path, backups).Finish(isMissing);
}

FileError SafeReplace::Check(const std::string& path) {
    const FileFacts facts = Locate(path);
    if (facts.error != CallError::None && facts.error != CallError::NotFound) {
        return FileErrorOf(facts.error);
    }
    // Attributes and access rights do not tell whether a folder on a server or on a protected disk
    // can be written to, so an empty file is made for a moment. A refusal is not tried again: a
    // user is waiting for the file to open. The name of the probe promises five bytes, so a probe
    // that a crash leaves never counts as a whole file.
    const std::string probe = LeftoverPath(facts.finalPath, LeftoverKind::New, "probe");
    std::unique_ptr<WritableFile> file;
    const CallError error = m_steps.Calls().Open(probe, OpenMode::New, file);
    file.reset();
    if (error == CallError::None) {
        m_steps.Delete(probe);
    }
    return error == CallError::Exists ? FileError::None : FileErrorOf(error);
}

std::vector<BackupFile> SafeReplace::ListBackups(const std::string& path) {
    const std::string finalPath = Locate(path).finalPath;
    Backups backups(m_steps, finalPath);
    const auto lock = LockFinal(finalPath);
    Leftovers leftovers(m_steps, finalPath, backups);
    // Ends an interrupted replacement first: its old file belongs into the list. A missing file is
    // not put back here; reading it does that.
    if (lock && m_steps.Calls().Stamp(finalPath) && leftovers.MayExist()) {
        leftovers.Finish(false);
    }
    return backups.List();
}

}  // namespace tamarind
