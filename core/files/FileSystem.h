#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tamarind {

// What can keep a file from being read or written, as far as the user is told different things.
enum class FileError {
    None,
    NotFound,       // no such file
    FolderMissing,  // no such folder to write into
    Unreachable,    // its server, drive or disk is not there at the moment
    BadName,        // no file can have this name
    IsFolder,       // the path names a folder
    AccessDenied,   // no right to it
    ReadOnly,       // its read-only attribute is set
    InUse,          // another program keeps it locked
    TooLarge,       // more bytes than the caller takes
    DiskFull,
    NotVerified,    // what was written could not be read back
    Changed,        // another program has changed it since it was read
    KeepsChanging,  // and does so again and again
    Other,
};

// Whether a file that cannot be read for this reason does not exist, and so counts as empty.
inline bool IsMissing(FileError error) {
    return error == FileError::NotFound || error == FileError::FolderMissing;
}

// Size and time of the last change. Two equal stamps mean the same content only if the file was not
// very young when the first stamp was taken: the clock of some file systems ticks every two
// seconds.
struct FileStamp {
    std::uint64_t size = 0;           // bytes
    std::uint64_t modifiedTicks = 0;  // 100 ns units of the clock that NowTicks reads
    bool operator==(const FileStamp&) const = default;
};

// The result of a read. On an error `bytes` is empty.
struct FileContent {
    FileError error = FileError::None;
    std::string bytes;
    FileStamp stamp;
};

// An earlier state of a file that is kept beside it.
struct BackupFile {
    std::string path;
    std::string date;        // local time, as "2026-11-21 06.45.12"
    std::uint64_t size = 0;  // bytes
    bool isFirst = false;    // the oldest of all, which stays for good
};

// Whether a replacement leaves the file's old state among its backups.
enum class Backup { No, Yes };

// The content of a file; nothing if there is no file.
using FileState = std::optional<std::string>;

// The result of a replacement. With an error the file was not replaced.
struct ReplaceResult {
    FileError error = FileError::None;
    // Set if another program came in between: the file that was moved out of the way held this text
    // instead of what was expected. With the error Changed, that program has also put a file of its
    // own in its place. In both cases the text is kept among the backups, at the path `aside`.
    FileState foreign;
    std::string aside;
};

// A right to read, change and replace files while no other copy of the program does. The destructor
// gives it back.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// Files on disk, as the rest of the program sees them: whole files are read and replaced, nothing
// is opened. Paths are UTF-8 with backslashes. A path that cannot be that of a file (CanBeFile)
// gives BadName. Calls block, a replacement on a slow disk for seconds; they are made by one
// thread.
class FileSystem {
public:
    // No settings file is larger, and more is not read.
    static constexpr std::uint64_t kMaxFileBytes = 64U << 20;

    virtual ~FileSystem() = default;

    // The stamp of a file; nothing for a missing file and for a folder.
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;

    // Whether there is a file or folder at the path.
    virtual bool Exists(const std::string& path) = 0;

    // The whole file, if it has at most `maxBytes` bytes. If another program has it open for
    // writing, this waits for it, for less than half a second, and then fails with InUse. If the
    // program or the machine stopped in the middle of a replacement, the file is put back first.
    virtual FileContent Read(const std::string& path, std::uint64_t maxBytes) = 0;

    // Makes `bytes` the content of a file that holds `expected`, or of a new file where `expected`
    // is nothing. At every moment at least one whole copy of the old content or of the new one is
    // on the disk. On an error the old content stands; the error is Changed if the file holds
    // something else.
    //
    // With a backup, the replaced content becomes one unless the newest backup has it already; if
    // that fails nothing is replaced. Links stay links: the file that they lead to is replaced.
    virtual ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                                   const FileState& expected, Backup backup) = 0;

    // The same, whatever the file holds: it is read first, again and again while other programs
    // change it, five times at most (KeepsChanging).
    FileError Replace(const std::string& path, const std::string& bytes,
                      Backup backup = Backup::No);

    // The backups of a file, newest first. Their paths can be given to Read.
    virtual std::vector<BackupFile> ListBackups(const std::string& path) = 0;

    // What would keep Exchange from working, or None, as far as that can be found out without
    // changing the file: its attributes, and whether a file can be made in its folder, which is
    // tried.
    virtual FileError CheckReplace(const std::string& path) = 0;

    // Makes a folder in one that exists. None if it is there already.
    virtual FileError MakeFolder(const std::string& path) = 0;

    // Keeps other copies of the program from replacing these files. They are locked in the order of
    // their final paths, so that two copies never wait for each other. Null if another copy holds
    // one of them for three seconds. This copy may lock a file several times; it is free when all
    // of its locks are gone.
    virtual std::shared_ptr<FileLock> Lock(const std::vector<std::string>& paths) = 0;

    // Deletes a backup.
    virtual FileError DeleteBackup(const std::string& path) = 0;

    // Now in 100 ns units, by the clock of FileStamp.
    virtual std::uint64_t NowTicks() = 0;
    // Blocks the calling thread.
    virtual void Sleep(unsigned milliseconds) = 0;
};

class FileCalls;
class SafeReplace;
struct FileBytes;

// The disk of this machine. It repairs what an interrupted replacement has left when a file is read
// or asked for, and hands everything else on to SafeReplace.
class DiskFileSystem final : public FileSystem {
public:
    DiskFileSystem();
    // For tests: uses `calls`, which must outlive this object, instead of the system.
    explicit DiskFileSystem(FileCalls& calls);
    ~DiskFileSystem() override;
    DiskFileSystem(const DiskFileSystem&) = delete;
    DiskFileSystem& operator=(const DiskFileSystem&) = delete;

    std::optional<FileStamp> Stamp(const std::string& path) override;
    bool Exists(const std::string& path) override;
    FileContent Read(const std::string& path, std::uint64_t maxBytes) override;
    ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                           const FileState& expected, Backup backup) override;
    std::vector<BackupFile> ListBackups(const std::string& path) override;
    FileError CheckReplace(const std::string& path) override;
    FileError MakeFolder(const std::string& path) override;
    std::shared_ptr<FileLock> Lock(const std::vector<std::string>& paths) override;
    FileError DeleteBackup(const std::string& path) override;
    std::uint64_t NowTicks() override;
    void Sleep(unsigned milliseconds) override;

private:
    // The result of a read after a repair, or `recovered` if that is an error.
    FileContent ReadAgain(const std::string& path, std::uint64_t maxBytes, FileError recovered);
    // Repairs a file that was missing a moment ago. None if it can be read now or nothing was left
    // of it.
    FileError PutBack(const std::string& path);

    std::unique_ptr<FileCalls> m_ownCalls;
    FileCalls& m_calls;
    std::unique_ptr<SafeReplace> m_replace;
};

}  // namespace tamarind
