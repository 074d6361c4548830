#include "core/SafeReplace.h"

#include <algorithm>
#include <cstdio>

#include "core/Backups.h"
#include "core/Unicode.h"

namespace tamarind {
namespace {

constexpr unsigned kLockMilliseconds = 3000;

std::string OldName(const std::string& path) {
    return path + ".~old";
}

std::string WholeName(const std::string& path) {
    return path + ".~whole";
}

bool IsMissing(CallError error) {
    return error == CallError::NotFound || error == CallError::FolderMissing;
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

std::shared_ptr<FileLock> SafeReplace::Lock(const std::string& path) {
    return LockFinal(Locate(path).finalPath);
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

FileError SafeReplace::Replace(const std::string& path, const std::string& bytes, Backup backup) {
    const FileFacts facts = Locate(path);
    if (facts.error != CallError::None && facts.error != CallError::NotFound) {
        return FileErrorOf(facts.error);
    }
    const auto lock = LockFinal(facts.finalPath);
    return lock ? FileErrorOf(ReplaceLocked(facts.finalPath, bytes, backup)) : FileError::InUse;
}

CallError SafeReplace::ReplaceLocked(const std::string& path, const std::string& bytes,
                                     Backup backup) {
    // Asked once more: another copy of the program may have had the file until a moment ago.
    FileFacts facts = Locate(path);
    const CallError unfinished = FinishInterrupted(path, facts.error);
    if (unfinished != CallError::None) {
        return unfinished;
    }
    if (facts.error == CallError::NotFound) {
        facts = Locate(path);
    }
    if (facts.error == CallError::NotFound) {
        return m_steps.WriteAndMove(path, bytes, MoveMode::Overwrite);
    }
    if (facts.error != CallError::None) {
        return facts.error;
    }
    if (facts.finalPath != path) {
        return CallError::Shared;  // a link since then
    }
    return facts.links > 1 ? OverwriteLinked(path, bytes, backup) : ReplaceOld(path, bytes, backup);
}

CallError SafeReplace::ReplaceOld(const std::string& path, const std::string& bytes,
                                  Backup backup) {
    std::string temporary;
    CallError error = m_steps.WriteTemporary(path, bytes, temporary);
    if (error != CallError::None) {
        return error;
    }
    Backups backups(m_steps, path);
    bool isKept = false;
    if (backup == Backup::Yes) {
        error = backups.Prepare(isKept);
    }
    const std::string old = isKept ? backups.OldName() : OldName(path);
    if (error == CallError::None) {
        error = m_steps.Retry([&] { return Exchange(path, temporary, old); });
        if (error == CallError::Unsupported) {
            error = MoveOver(path, temporary, isKept);
        } else if (error == CallError::None && isKept) {
            backups.Adopt();  // if that fails, the next replacement does it
        } else if (error == CallError::None) {
            m_steps.Delete(old);
        }
    }
    if (error != CallError::None) {
        m_steps.Delete(temporary);
    }
    return error;
}

// One try to put the temporary file in the place of the real one. On an error the old file has its
// name, unless even giving it back has failed: the next read does that then.
CallError SafeReplace::Exchange(const std::string& path, const std::string& temporary,
                                const std::string& old) {
    const CallError error = m_steps.Calls().Replace(path, temporary, old);
    switch (error) {
        case CallError::None:
        case CallError::Unsupported:
        case CallError::UnableToRemoveOld:
            break;  // after the last two both have their names
        case CallError::UnableToMoveNew:
        case CallError::UnableToMoveNewAtAll:
        default:
            // After the first two the old file bears the backup's name, of the other errors nobody
            // says where it is. The move does nothing if it is in its place.
            m_steps.Move(old, path, MoveMode::KeepExisting);
            break;
    }
    return error;
}

// Where the file system has no such replacement: the old file gives way, so its backup is a copy.
CallError SafeReplace::MoveOver(const std::string& path, const std::string& temporary,
                                bool isKept) {
    if (isKept) {
        const FileBytes old = m_steps.Read(path);
        const CallError error =
            old.error == CallError::None ? Backups(m_steps, path).Keep(old.bytes) : old.error;
        if (error != CallError::None) {
            return error;
        }
    }
    return m_steps.Move(temporary, path, MoveMode::Overwrite);
}

// Another file in its place would part the names, so a file with several is overwritten: it is the
// only case in which the file itself is not whole for a moment. The copy beside it is, and as long
// as it exists it counts as the file's content: deleting it makes the new content valid.
CallError SafeReplace::OverwriteLinked(const std::string& path, const std::string& bytes,
                                       Backup backup) {
    const FileBytes old = m_steps.Read(path);
    CallError error = old.error;
    if (error == CallError::None && backup == Backup::Yes) {
        error = Backups(m_steps, path).Keep(old.bytes);
    }
    if (error == CallError::None) {
        error = m_steps.WriteAndMove(WholeName(path), old.bytes, MoveMode::Overwrite);
    }
    if (error != CallError::None) {
        return error;
    }
    error = m_steps.WriteInPlace(path, bytes);
    if (error == CallError::None) {
        error = m_steps.Delete(WholeName(path));
    }
    if (error != CallError::None && m_steps.WriteInPlace(path, old.bytes) == CallError::None) {
        m_steps.Delete(WholeName(path));
    }
    return error;
}

bool SafeReplace::MayHaveLeftovers(const std::string& path) {
    const std::string finalPath = Locate(path).finalPath;
    for (const std::string& start : {finalPath + ".~", Backups(m_steps, finalPath).OldName()}) {
        std::vector<FolderEntry> files;
        const CallError error = m_steps.Retry([&] { return m_steps.Calls().List(start, files); });
        if (!files.empty() || (error != CallError::None && !IsMissing(error))) {
            return true;
        }
    }
    return false;
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
    std::vector<FolderEntry> files;
    CallError error = m_steps.Retry([&] { return m_steps.Calls().List(path + ".~", files); });
    if (error != CallError::None) {
        return error == CallError::FolderMissing ? CallError::None : error;
    }
    const std::string folder = FolderWithSeparator(path);
    const auto isThere = [&](const std::string& wanted) {
        return std::any_of(files.begin(), files.end(), [&](const FolderEntry& file) {
            return EqualsIgnoreCase(folder + file.name, wanted);
        });
    };
    if (isThere(WholeName(path))) {
        error = RestoreWhole(path);
    } else if (isMissing) {
        error = PutBackOld(path);
    } else if (isThere(OldName(path))) {
        m_steps.Delete(OldName(path));  // only this was missing to the end of a replacement
    }
    m_steps.RemoveTemporaries(folder, files);
    return error;
}

CallError SafeReplace::PutBackOld(const std::string& path) {
    for (const std::string& old : {OldName(path), Backups(m_steps, path).OldName()}) {
        const CallError error = m_steps.Move(old, path, MoveMode::KeepExisting);
        if (!IsMissing(error)) {
            return error;
        }
    }
    return CallError::None;
}

// Overwriting a file with several links has been interrupted.
CallError SafeReplace::RestoreWhole(const std::string& path) {
    const FileBytes whole = m_steps.Read(WholeName(path));
    if (whole.error != CallError::None) {
        return whole.error;
    }
    const FileBytes present = m_steps.Read(path);
    if (IsMissing(present.error)) {
        return m_steps.Move(WholeName(path), path, MoveMode::KeepExisting);
    }
    CallError error = present.error;
    if (error == CallError::None && present.bytes != whole.bytes) {
        // Another program may have written this since then, so it is not lost either.
        error = Backups(m_steps, path).Keep(present.bytes);
        if (error == CallError::None) {
            error = m_steps.WriteInPlace(path, whole.bytes);
        }
    }
    return error == CallError::None ? m_steps.Delete(WholeName(path)) : error;
}

FileError SafeReplace::Check(const std::string& path) {
    const FileFacts facts = Locate(path);
    if (facts.error != CallError::None && facts.error != CallError::NotFound) {
        return FileErrorOf(facts.error);
    }
    // Attributes and lists of rights do not tell what a folder on a server or on a protected disk
    // takes. Here a refusal is not tried again: a user is waiting for the file to open.
    const std::string probe = facts.finalPath + std::string(FileSteps::kTemporaryMark) + "00000000";
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
    if (lock && m_steps.Calls().Stamp(finalPath) && m_steps.Calls().Stamp(backups.OldName())) {
        backups.PutInOrder();
    }
    return backups.List();
}

}  // namespace tamarind
