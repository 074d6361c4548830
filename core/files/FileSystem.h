#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tamarind {

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

// Whether a file that can not be read for this reason may as well be empty.
inline bool IsMissing(FileError error) {
    return error == FileError::NotFound || error == FileError::FolderMissing;
}

// Size and time of the last change; two equal stamps mean the same file only if the file was not
// very young when the first was taken.
struct FileStamp {
    std::uint64_t size = 0;           // bytes
    std::uint64_t modifiedTicks = 0;  // 100 ns units of the clock that NowTicks reads
    bool operator==(const FileStamp&) const = default;
};

struct FileContent {
    FileError error = FileError::None;
    std::string bytes;
    FileStamp stamp;
};

// An earlier state of a file.
struct BackupFile {
    std::string path;
    std::string date;        // local time, as "2026-11-21 06.45.12"
    std::uint64_t size = 0;  // bytes
    bool isFirst = false;    // the oldest of all, which stays for good
};

// Whether a replacement leaves the file's old state among its backups.
enum class Backup { No, Yes };

// What a file holds; nothing for a missing one.
using FileState = std::optional<std::string>;

// What became of a replacement. With an error the file was not replaced.
struct ReplaceResult {
    FileError error = FileError::None;
    // Set where another program came in between: what has been moved out of the way is something
    // else than was expected. With the error Changed that program has made a file of its own in its
    // place. Either way the text is kept in `aside`, among the backups.
    FileState foreign;
    std::string aside;
};

// Held while a file is read, changed and replaced; it is given back by the destructor.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// Files on disk. Paths are UTF-8, with the backslash as separator.
class FileSystem {
public:
    // No settings file is larger, and more is not read.
    static constexpr std::uint64_t kMaxFileBytes = 64U << 20;

    virtual ~FileSystem() = default;

    // The stamp of a file; nothing for a missing file and for a folder.
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;

    // The whole file, if it has at most `maxBytes` bytes. A file that another program holds for
    // writing is waited for, and InUse after less than half a second. Where the program or the
    // machine stopped in the middle of a replacement, the file is put back first.
    virtual FileContent Read(const std::string& path, std::uint64_t maxBytes) = 0;

    // Makes `bytes` the content of a file that holds `expected`, creating it if need be; at every
    // moment at least one whole copy of the old content or of the new one is on the disk. On an
    // error the old content stands; that is Changed where the file holds something else. With a
    // backup the content that is replaced becomes one, unless the newest has it already; where that
    // fails nothing is replaced. Links stay links: the file that they lead to is replaced.
    virtual ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                                   const FileState& expected, Backup backup) = 0;

    // The same, whatever the file holds.
    FileError Replace(const std::string& path, const std::string& bytes,
                      Backup backup = Backup::No);

    // Newest first. Their paths can be read.
    virtual std::vector<BackupFile> ListBackups(const std::string& path) = 0;

    // What would keep Replace from working, as far as it can be known without trying: attributes
    // of the file and the right to make files in its folder.
    virtual FileError CheckReplace(const std::string& path) = 0;

    // Makes a folder in one that exists; one that is there already is no error.
    virtual FileError MakeFolder(const std::string& path) = 0;

    // Keeps other copies of the program from replacing these files, in the order of their final
    // paths, so that no two copies wait for each other. Null where another one did so for several
    // seconds. A file can be locked more than once.
    virtual std::shared_ptr<FileLock> Lock(const std::vector<std::string>& paths) = 0;

    // Deletes a backup.
    virtual FileError DeleteBackup(const std::string& path) = 0;

    virtual std::uint64_t NowTicks() = 0;
    virtual void Sleep(unsigned milliseconds) = 0;
};

class FileCalls;
class SafeReplace;
struct FileBytes;

// The disk of this machine.
class DiskFileSystem final : public FileSystem {
public:
    DiskFileSystem();
    // For tests: over other calls than those of the system.
    explicit DiskFileSystem(FileCalls& calls);
    ~DiskFileSystem() override;
    DiskFileSystem(const DiskFileSystem&) = delete;
    DiskFileSystem& operator=(const DiskFileSystem&) = delete;

    std::optional<FileStamp> Stamp(const std::string& path) override;
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
    FileContent ReadAgain(const std::string& path, std::uint64_t maxBytes, FileError recovered);
    FileError PutBack(const std::string& path);

    std::unique_ptr<FileCalls> m_ownCalls;
    FileCalls& m_calls;
    std::unique_ptr<SafeReplace> m_replace;
};

}  // namespace tamarind
