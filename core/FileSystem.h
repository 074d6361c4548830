#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tamarind {

enum class FileError {
    None,
    NotFound,       // no such file
    FolderMissing,  // no such folder to write into
    IsFolder,       // the path names a folder
    AccessDenied,   // no right to it
    ReadOnly,       // its read-only attribute is set
    InUse,          // another program keeps it locked
    TooLarge,       // more bytes than the caller takes
    DiskFull,
    Other,
};

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

// Files on disk. Paths are UTF-8, with the backslash as separator.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    // The stamp of a file; nothing for a missing file and for a folder.
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;

    // The whole file, if it has at most `maxBytes` bytes.
    virtual FileContent Read(const std::string& path, std::uint64_t maxBytes) = 0;

    // Makes `bytes` the file's content, creating it if need be, in one step: at every moment the
    // path names the old content or the new one. On an error the old content stands.
    virtual FileError Replace(const std::string& path, const std::string& bytes) = 0;

    virtual std::uint64_t NowTicks() = 0;
};

// The disk of this machine.
class DiskFileSystem final : public FileSystem {
public:
    std::optional<FileStamp> Stamp(const std::string& path) override;
    FileContent Read(const std::string& path, std::uint64_t maxBytes) override;
    FileError Replace(const std::string& path, const std::string& bytes) override;
    std::uint64_t NowTicks() override;
};

}  // namespace tamarind
