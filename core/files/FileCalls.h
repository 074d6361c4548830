#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/files/FileSystem.h"

namespace tamarind {

// Why a call failed, as far as the steps of a safe replacement treat the reasons differently.
enum class CallError {
    None,
    NotFound,       // no such file in a folder that exists
    LinkToNothing,  // the file that a link leads to does not exist
    FolderMissing,  // no such folder
    Unreachable,    // no such server, drive or disk at the moment
    BadName,        // no file can have this name
    Exists,         // the name is taken
    IsFolder,
    AccessDenied,
    ReadOnly,              // its read-only attribute is set
    Shared,                // another program has it open and does not share it
    Locked,                // another program has locked a part of it
    TooLarge,              // more bytes than the caller takes
    DiskFull,              // or the user's quota is
    Unsupported,           // the file system cannot do that
    UnableToRemoveOld,     // Replace: both files still have their names
    UnableToMoveNew,       // Replace: the new file has its name, the old one may be the backup
    UnableToMoveNewAtAll,  // Replace: the new file has its name, the old one is the backup
    NotVerified,           // what was written reads back as something else
    Changed,               // the file holds something else than was expected
    Other,
};

inline bool IsMissing(CallError error) {
    return error == CallError::NotFound || error == CallError::FolderMissing;
}

// What a file is. On an error only `error` and `finalPath` are set.
struct FileFacts {
    CallError error = CallError::None;
    std::string finalPath;    // after all links; on an error the absolute form of the path
    std::uint32_t links = 1;  // hard links
    bool isFolder = false;
    bool isReadOnly = false;
};

// What was read of a file. `bytes` is empty on an error.
struct FileBytes {
    CallError error = CallError::None;
    std::string bytes;
    FileStamp stamp;
    std::uint32_t links = 1;
};

// A file in a folder; its name without the folder.
struct FolderEntry {
    std::string name;
    FileStamp stamp;
};

// A date and time of day in the local time zone.
struct CivilTime {
    int year = 0;
    int month = 0;  // from 1
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// A file that is open for reading. Until the destructor closes it, nobody can open it for writing,
// but others may rename it, delete it or put another one in its place.
class HeldFile {
public:
    virtual ~HeldFile() = default;
};

// One that is held by owning the system's handle of it, and let go with that.
template <typename Handle>
class OwnedFile final : public HeldFile {
public:
    explicit OwnedFile(Handle file) : m_file(std::move(file)) {}

private:
    Handle m_file;
};

// A file that is open for writing; the destructor closes it. Until then nobody else can open it for
// writing, and FileCalls::Read of it fails with Shared.
class WritableFile {
public:
    virtual ~WritableFile() = default;

    // The whole content of a file that was opened in place, if it has at most `maxBytes` bytes
    // (otherwise TooLarge). Whether it succeeds or not, the next Write starts at the first byte
    // again.
    virtual FileBytes ReadAndRewind(std::uint64_t maxBytes) = 0;

    // Writes at the place where the last call ended, at first at the start of the file. `written`
    // is the number of bytes that were written, which may be less than asked for; callers go on
    // with the rest.
    virtual CallError Write(std::string_view bytes, std::size_t& written) = 0;

    // Ends the file after the last byte written.
    virtual CallError CutHere() = 0;

    // Waits until the disk itself, not only the system's cache, has every byte.
    virtual CallError Flush() = 0;
};

// New and KeepExisting fail with Exists if there is a file of that name already.
enum class OpenMode { New, InPlace };             // the name must be free, or must exist
enum class MoveMode { KeepExisting, Overwrite };  // what becomes of a file with the new name

// The system calls that reading, replacing and backing up files are made of. Each function is one
// step, and nothing is tried twice: what can go wrong between two steps is the business of the
// callers (FileSteps, SafeReplace, Leftovers, Backups). Tests put a fake in its place that fails or
// stops at any step. Paths are UTF-8 and may be longer than 260 characters.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    // The final path, attributes and number of links of a file or folder. They are asked of an open
    // handle, not of the entry in the folder, which may be out of date.
    virtual FileFacts Inspect(const std::string& path) = 0;
    // Size and time from the folder's entry; nothing for a folder and on any error.
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;
    // The whole file if it has at most `maxBytes` bytes, otherwise TooLarge. Fails with Shared
    // while anybody has it open for writing, so what it returns is never half written. With `held`
    // the file stays open after a successful read, and writers stay out, until the caller drops
    // that object.
    virtual FileBytes Read(const std::string& path, std::uint64_t maxBytes,
                           std::unique_ptr<HeldFile>* held = nullptr) = 0;
    // The files, not the folders, whose path begins with `pathPrefix`, in no particular order: for
    // "C:\tc\Wincmd" those of "C:\tc" whose name begins with "Wincmd". FolderMissing if "C:\tc"
    // does not exist.
    virtual CallError List(const std::string& pathPrefix, std::vector<FolderEntry>& files) = 0;

    // On an error `file` stays as it is.
    virtual CallError Open(const std::string& path, OpenMode mode,
                           std::unique_ptr<WritableFile>& file) = 0;

    // Puts `replacement` in the place of `path`. The new file takes over the rights and the time of
    // creation of the old one, which gets the name `backup`, in the same folder or one below it.
    // This is not atomic: a program that is killed in the middle may leave nothing under `path` and
    // the old file under `backup`. Unsupported where the file system has no such operation.
    virtual CallError Replace(const std::string& path, const std::string& replacement,
                              const std::string& backup) = 0;
    // Renames within one volume.
    virtual CallError Move(const std::string& from, const std::string& to, MoveMode mode) = 0;
    virtual CallError Delete(const std::string& path) = 0;
    // The folder above it must exist. Exists if there is one already.
    virtual CallError MakeFolder(const std::string& path) = 0;

    // A lock between processes, by a `name` that is no path. Null if another program holds it for
    // longer than `milliseconds`. A program that ends, or is killed, loses its locks.
    virtual std::shared_ptr<FileLock> Lock(const std::string& name, unsigned milliseconds) = 0;

    // Now in 100 ns units, by the same clock as FileStamp.
    virtual std::uint64_t NowTicks() = 0;  // the clock of FileStamp
    // In the local time zone. All zero if the system cannot convert it.
    virtual CivilTime LocalTime(std::uint64_t ticks) = 0;
    virtual void Sleep(unsigned milliseconds) = 0;
};

// The implementation for the system that this was compiled for.
std::unique_ptr<FileCalls> MakeFileCalls();

}  // namespace tamarind
