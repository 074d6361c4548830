#include "core/files/SafeReplace.h"

#include <cstdio>
#include <set>

#include "core/files/Backups.h"
#include "core/files/Leftovers.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr unsigned kLockMilliseconds = 3000;

bool IsMissing(CallError error) {
    return error == CallError::NotFound || error == CallError::FolderMissing;
}

// Given back in any order.
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
        // The folder's separator is the first character of what is added.
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
        char hash[17];
        std::snprintf(hash, sizeof(hash), "%016llx",
                      static_cast<unsigned long long>(HashIgnoreCase(finalPath)));
        lock = m_steps.Calls().Lock("TamarindEditor-save-" + std::string(hash), kLockMilliseconds);
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
    // Asked once more: another copy of the program may have had the file until a moment ago.
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
        return Failed(CallError::Shared);  // a link since then
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
    // Another program has made a file while there was none for a moment.
    ReplaceResult result = LookAside(job, old, backups, true);
    result.error = FileError::Changed;
    result.foreign = result.foreign ? result.foreign : job.expected;
    return result;
}

// Whether the file is still what is to be replaced. With `held` it stays so.
CallError SafeReplace::Compare(const Job& job, std::unique_ptr<HeldFile>& held) {
    const FileBytes present = m_steps.Calls().Read(job.path, FileSystem::kMaxFileBytes, &held);
    const bool isOther = present.error == CallError::None && present.bytes != job.expected;
    return isOther || present.error == CallError::NotFound ? CallError::Changed : present.error;
}

// One try to put the temporary file in the place of the real one. On an error the old file has its
// name, unless even giving it back has failed: the next read does that then. Exists: another file
// has that name, and the old one is aside.
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
            return error;  // after the last two both have their names
        case CallError::NotFound:
            return CallError::Changed;
        case CallError::UnableToMoveNew:
        case CallError::UnableToMoveNewAtAll:
        default:
            // After the first two the old file bears the backup's name, of the other errors nobody
            // says where it is. The move does nothing if it is in its place.
            return m_steps.Move(old, job.path, MoveMode::KeepExisting) == CallError::Exists
                       ? CallError::Exists
                       : error;
    }
}

// Where the file system has no such replacement: the old file gives way, so its backup is a copy.
// Nobody moves another file over one that is held.
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

// A program whose handle was open before may have written into the file that has been moved aside,
// or have put another one in its place before it was. That text is kept, also where no backup was
// asked for, and so is what was there before it.
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
    // If that fails, the next replacement does it.
    if (backups.Adopt(old, result.aside) != CallError::None) {
        result.aside = old;
    }
    if (isForeign) {
        result.foreign = aside.bytes;
        if (aside.error != CallError::None) {
            // Still held: what it becomes nobody can tell, but it is among the backups.
            result.foreign = job.expected;
        }
    }
    return result;
}

// Another file in its place would part the names, so a file with several is overwritten: it is the
// only case in which the file itself is not whole for a moment. The copy beside it is, and as long
// as it exists a file that is not whole gets its content again.
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
    // The temporary file tells what is new from what is torn for as long as the copy is there.
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
        return located;  // whether the file is there decides what becomes of what is left
    }
    Backups backups(m_steps, path);
    return Leftovers(m_steps, path, backups).Finish(isMissing);
}

FileError SafeReplace::Check(const std::string& path) {
    const FileFacts facts = Locate(path);
    if (facts.error != CallError::None && facts.error != CallError::NotFound) {
        return FileErrorOf(facts.error);
    }
    // Attributes and lists of rights do not tell what a folder on a server or on a protected disk
    // takes. Here a refusal is not tried again: a user is waiting for the file to open.
    // The name is not that of an empty file, so one that a crash leaves is never taken for more.
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
    if (lock && m_steps.Calls().Stamp(finalPath) && leftovers.MayExist()) {
        leftovers.Finish(false);
    }
    return backups.List();
}

}  // namespace tamarind
