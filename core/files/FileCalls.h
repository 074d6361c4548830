#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/FileSystem.h"

namespace tamarind {

// Why a call failed, as far as the steps of a safe replacement treat reasons apart.
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

struct FileFacts {
    CallError error = CallError::None;
    std::string finalPath;  // behind all links; on an error the absolute form of what was asked for
    std::uint32_t links = 1;  // names of the file
    bool isFolder = false;
    bool isReadOnly = false;
};

struct FileBytes {
    CallError error = CallError::None;
    std::string bytes;
    FileStamp stamp;
    std::uint32_t links = 1;
};

struct FolderEntry {
    std::string name;
    FileStamp stamp;
};

// By the clock on the wall.
struct CivilTime {
    int year = 0;
    int month = 0;  // from 1
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// A file that is open for reading: nobody opens it for writing until the destructor has closed it.
// Others may rename it, delete it or put another one in its place.
class HeldFile {
public:
    virtual ~HeldFile() = default;
};

// A file that is open for writing, and closed by the destructor. Nobody else opens it for writing
// meanwhile, and FileCalls::Read fails.
class WritableFile {
public:
    virtual ~WritableFile() = default;

    // What the file holds, if it was opened in place. Writing begins at its start again.
    virtual FileBytes ReadAndRewind(std::uint64_t maxBytes) = 0;

    // Goes on writing at the end of what was written before, from the file's start; `written` may
    // come out as less than was asked for.
    virtual CallError Write(std::string_view bytes, std::size_t& written) = 0;

    // Removes what stands behind the last byte written.
    virtual CallError CutHere() = 0;

    // Waits until the disk itself has every byte.
    virtual CallError Flush() = 0;
};

enum class OpenMode { New, InPlace };             // the name must be free, or must exist
enum class MoveMode { KeepExisting, Overwrite };  // what becomes of a file with the new name

// The calls of the system that reading, replacing and backing up files are made of, one each: what
// can go wrong between two of them is what their callers are there for. Paths are UTF-8 and may be
// longer than 260 characters.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    // Asked of an open handle, not of the folder's entry.
    virtual FileFacts Inspect(const std::string& path) = 0;
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;
    // Fails with Shared while anybody holds the file for writing, so what it gives is not half
    // written. With `held` the file stays open, and writers stay out, until that is given back.
    virtual FileBytes Read(const std::string& path, std::uint64_t maxBytes,
                           std::unique_ptr<HeldFile>* held = nullptr) = 0;
    // The files of one folder, those whose paths begin so.
    virtual CallError List(const std::string& pathPrefix, std::vector<FolderEntry>& files) = 0;

    virtual CallError Open(const std::string& path, OpenMode mode,
                           std::unique_ptr<WritableFile>& file) = 0;

    // Puts `replacement` in the place of the file, which passes on its rights and the time of its
    // creation and gets the name `backup`, in this folder or one below. This is no single step: an
    // end of the program in its middle may leave nothing under `path`, and the old file under
    // `backup`.
    virtual CallError Replace(const std::string& path, const std::string& replacement,
                              const std::string& backup) = 0;
    virtual CallError Move(const std::string& from, const std::string& to, MoveMode mode) = 0;
    virtual CallError Delete(const std::string& path) = 0;
    virtual CallError MakeFolder(const std::string& path) = 0;

    // Null if another program holds the lock of this name for as long as `milliseconds`. A program
    // that ends loses its locks.
    virtual std::shared_ptr<FileLock> Lock(const std::string& name, unsigned milliseconds) = 0;

    virtual std::uint64_t NowTicks() = 0;  // the clock of FileStamp
    virtual CivilTime LocalTime(std::uint64_t ticks) = 0;
    virtual void Sleep(unsigned milliseconds) = 0;
};

// The calls of this machine's system.
std::unique_ptr<FileCalls> MakeFileCalls();

}  // namespace tamarind
