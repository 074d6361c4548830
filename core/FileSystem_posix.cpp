#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

#include "core/FileSystem.h"

namespace tamarind {
namespace {

std::uint64_t TicksOf(const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * 10'000'000U +
           static_cast<std::uint64_t>(time.tv_nsec) / 100U;
}

FileError ErrorOf(int code) {
    switch (code) {
        case ENOENT:
            return FileError::NotFound;
        case ENOTDIR:
            return FileError::FolderMissing;
        case EISDIR:
            return FileError::IsFolder;
        case EACCES:
        case EPERM:
        case EROFS:
            return FileError::AccessDenied;
        case ENOSPC:
            return FileError::DiskFull;
        default:
            return FileError::Other;
    }
}

class Descriptor {
public:
    explicit Descriptor(int value) : m_value(value) {}
    ~Descriptor() {
        if (m_value >= 0) {
            close(m_value);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return m_value; }

private:
    int m_value;
};

FileError WriteNewFile(const std::string& path, const std::string& bytes) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (file.Get() < 0) {
        return errno == ENOENT ? FileError::FolderMissing : ErrorOf(errno);
    }
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(file.Get(), bytes.data() + done, bytes.size() - done);
        if (written < 0) {
            return ErrorOf(errno);
        }
        done += static_cast<std::size_t>(written);
    }
    return fsync(file.Get()) == 0 ? FileError::None : ErrorOf(errno);
}

}  // namespace

std::optional<FileStamp> DiskFileSystem::Stamp(const std::string& path) {
    struct stat info = {};
    if (stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) {
        return std::nullopt;
    }
    return FileStamp{static_cast<std::uint64_t>(info.st_size), TicksOf(info.st_mtim)};
}

FileContent DiskFileSystem::Read(const std::string& path, std::uint64_t maxBytes) {
    FileContent content;
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info = {};
    if (file.Get() < 0 || fstat(file.Get(), &info) != 0) {
        content.error = ErrorOf(errno);
        return content;
    }
    content.stamp = {static_cast<std::uint64_t>(info.st_size), TicksOf(info.st_mtim)};
    if (S_ISDIR(info.st_mode)) {
        content.error = FileError::IsFolder;
        return content;
    }
    if (content.stamp.size > maxBytes) {
        content.error = FileError::TooLarge;
        return content;
    }
    content.bytes.resize(static_cast<std::size_t>(info.st_size));
    std::size_t done = 0;
    while (done < content.bytes.size()) {
        const ssize_t count =
            read(file.Get(), content.bytes.data() + done, content.bytes.size() - done);
        if (count < 0) {
            content.error = ErrorOf(errno);
            content.bytes.clear();
            return content;
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    content.bytes.resize(done);
    return content;
}

FileError DiskFileSystem::Replace(const std::string& path, const std::string& bytes) {
    struct stat info = {};
    const bool exists = stat(path.c_str(), &info) == 0;
    if (exists && S_ISDIR(info.st_mode)) {
        return FileError::IsFolder;
    }
    if (exists && (info.st_mode & S_IWUSR) == 0) {
        return FileError::ReadOnly;
    }
    const std::string temporary = path + ".~" + std::to_string(getpid());
    FileError error = WriteNewFile(temporary, bytes);
    if (error == FileError::None && rename(temporary.c_str(), path.c_str()) != 0) {
        error = ErrorOf(errno);
    }
    if (error != FileError::None) {
        unlink(temporary.c_str());
    }
    return error;
}

std::uint64_t DiskFileSystem::NowTicks() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return TicksOf(now);
}

}  // namespace tamarind
