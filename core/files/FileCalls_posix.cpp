// The native build exists for tests, sanitizers and fuzzers, so that the classes above FileCalls
// run where these tools do. This file gives the calls the same results as on Windows as far as
// Linux can: locks take the place of share modes, and an exchange of names that of ReplaceFileW.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <thread>
#include <utility>

#include "core/files/FileCalls.h"

namespace tamarind {
namespace {

namespace fs = std::filesystem;

// In units of 100 ns.
std::uint64_t TicksOf(const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * 10'000'000U +
           static_cast<std::uint64_t>(time.tv_nsec) / 100U;
}

// Translates an errno. Codes that the callers do not treat differently become Other.
CallError ErrorOf(int code) {
    switch (code) {
        case 0:
            return CallError::None;
        case ENOENT:
            return CallError::NotFound;
        case ENOTDIR:
            return CallError::FolderMissing;
        case ENODEV:
        case ENXIO:
        case ESTALE:
        case EHOSTUNREACH:
        case ENETUNREACH:
        case ENOTCONN:
            return CallError::Unreachable;
        case EEXIST:
            return CallError::Exists;
        case EISDIR:
            return CallError::IsFolder;
        case EACCES:
        case EPERM:
        case EROFS:
            return CallError::AccessDenied;
        case ETXTBSY:
        case EBUSY:
        case EWOULDBLOCK:
            return CallError::Shared;
        case ENOSPC:
        case EDQUOT:
            return CallError::DiskFull;
        case ENOSYS:
        case EOPNOTSUPP:
        case EXDEV:
            return CallError::Unsupported;
        default:
            return CallError::Other;
    }
}

// For calls that return a negative number on an error and set errno.
CallError ErrorIfNegative(int result) {
    return result < 0 ? ErrorOf(errno) : CallError::None;
}

// For calls that create something: here ENOENT means that the folder is missing.
CallError ErrorInFolder(int result) {
    const CallError error = ErrorIfNegative(result);
    return error == CallError::NotFound ? CallError::FolderMissing : error;
}

// With its separator.
std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// Owns a file descriptor; a negative value means none.
class Descriptor {
public:
    explicit Descriptor(int value) : m_value(value) {}
    Descriptor(Descriptor&& other) noexcept : m_value(std::exchange(other.m_value, -1)) {}
    ~Descriptor() {
        if (m_value >= 0) {
            close(m_value);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;
    int Get() const { return m_value; }

private:
    int m_value;
};

// There are no share modes. Instead whoever reads a file or overwrites it in place locks it as a
// whole: `operation` is LOCK_SH or LOCK_EX. On file systems without locks nothing is locked.
CallError LockWhole(int file, int operation) {
    const bool isTaken = flock(file, operation | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    return isTaken ? CallError::Shared : CallError::None;
}

class PosixFile final : public WritableFile {
public:
    explicit PosixFile(Descriptor file) : m_file(std::move(file)) {}

    FileBytes ReadAndRewind(std::uint64_t maxBytes) override;
    CallError Write(std::string_view bytes, std::size_t& written) override {
        const ssize_t count = write(m_file.Get(), bytes.data(), bytes.size());
        written = count < 0 ? 0 : static_cast<std::size_t>(count);
        return count < 0 ? ErrorOf(errno) : CallError::None;
    }
    CallError CutHere() override {
        return ErrorIfNegative(ftruncate(m_file.Get(), lseek(m_file.Get(), 0, SEEK_CUR)));
    }
    CallError Flush() override { return ErrorIfNegative(fsync(m_file.Get())); }

private:
    Descriptor m_file;
};

// Deletes the file of the lock while the descriptor, and with it the lock, is still held.
class DescriptorLock final : public FileLock {
public:
    DescriptorLock(Descriptor file, std::string path)
        : m_file(std::move(file)), m_path(std::move(path)) {}
    ~DescriptorLock() override { unlink(m_path.c_str()); }
    DescriptorLock(const DescriptorLock&) = delete;
    DescriptorLock& operator=(const DescriptorLock&) = delete;

private:
    Descriptor m_file;
    std::string m_path;
};

// Whether `path` still names the open file. The owner of a lock deletes its file, so a lock taken
// on a file that was deleted meanwhile keeps nobody out.
bool IsStillThere(int file, const std::string& path) {
    struct stat opened = {};
    struct stat present = {};
    return fstat(file, &opened) == 0 && stat(path.c_str(), &present) == 0 &&
           opened.st_ino == present.st_ino;
}

class PosixFileCalls final : public FileCalls {
public:
    FileFacts Inspect(const std::string& path) override;
    std::optional<FileStamp> Stamp(const std::string& path) override;
    FileBytes Read(const std::string& path, std::uint64_t maxBytes,
                   std::unique_ptr<HeldFile>* held) override;
    CallError List(const std::string& pathPrefix, std::vector<FolderEntry>& files) override;
    CallError Open(const std::string& path, OpenMode mode,
                   std::unique_ptr<WritableFile>& file) override;
    CallError Replace(const std::string& path, const std::string& replacement,
                      const std::string& backup) override;
    CallError Move(const std::string& from, const std::string& to, MoveMode mode) override;
    CallError Delete(const std::string& path) override {
        return ErrorIfNegative(unlink(path.c_str()));
    }
    CallError MakeFolder(const std::string& path) override {
        return ErrorInFolder(mkdir(path.c_str(), 0777));
    }
    std::shared_ptr<FileLock> Lock(const std::string& name, unsigned milliseconds) override;
    std::uint64_t NowTicks() override;
    CivilTime LocalTime(std::uint64_t ticks) override;
    void Sleep(unsigned milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
};

FileFacts PosixFileCalls::Inspect(const std::string& path) {
    FileFacts facts;
    std::error_code ignored;
    facts.finalPath = fs::absolute(path, ignored).string();
    struct stat info = {};
    if (stat(path.c_str(), &info) != 0) {
        facts.error = ErrorOf(errno);
        if (facts.error == CallError::NotFound && lstat(path.c_str(), &info) == 0) {
            facts.error = CallError::LinkToNothing;
        }
        return facts;
    }
    facts.links = S_ISDIR(info.st_mode) ? 1 : static_cast<std::uint32_t>(info.st_nlink);
    facts.isFolder = S_ISDIR(info.st_mode);
    facts.isReadOnly = (info.st_mode & S_IWUSR) == 0;
    std::error_code error;
    const fs::path finalPath = fs::canonical(path, error);
    facts.error = ErrorOf(error.value());
    facts.finalPath = error ? facts.finalPath : finalPath.string();
    return facts;
}

std::optional<FileStamp> PosixFileCalls::Stamp(const std::string& path) {
    struct stat info = {};
    if (stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) {
        return std::nullopt;
    }
    return FileStamp{static_cast<std::uint64_t>(info.st_size), TicksOf(info.st_mtim)};
}

// Fills `bytes`, whose size says how much to read, and shortens it at an early end of the file.
CallError ReadAll(int file, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = read(file, bytes.data() + done, bytes.size() - done);
        if (count < 0) {
            bytes.clear();
            return ErrorOf(errno);
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return CallError::None;
}

// From the present position of the descriptor.
FileBytes ReadDescriptor(int file, std::uint64_t maxBytes) {
    FileBytes result;
    struct stat info = {};
    if (file < 0 || fstat(file, &info) != 0) {
        result.error = ErrorOf(errno);
        return result;
    }
    result.stamp = {static_cast<std::uint64_t>(info.st_size), TicksOf(info.st_mtim)};
    result.links = static_cast<std::uint32_t>(info.st_nlink);
    if (S_ISDIR(info.st_mode)) {
        result.error = CallError::IsFolder;
    } else if (result.stamp.size > maxBytes) {
        result.error = CallError::TooLarge;
    } else {
        result.bytes.resize(static_cast<std::size_t>(info.st_size));
        result.error = ReadAll(file, result.bytes);
    }
    return result;
}

FileBytes PosixFile::ReadAndRewind(std::uint64_t maxBytes) {
    lseek(m_file.Get(), 0, SEEK_SET);
    FileBytes read = ReadDescriptor(m_file.Get(), maxBytes);
    lseek(m_file.Get(), 0, SEEK_SET);
    return read;
}

FileBytes PosixFileCalls::Read(const std::string& path, std::uint64_t maxBytes,
                               std::unique_ptr<HeldFile>* held) {
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() >= 0) {
        const CallError error = LockWhole(file.Get(), LOCK_SH);
        if (error != CallError::None) {
            return {error, {}, {}};
        }
    }
    FileBytes read = ReadDescriptor(file.Get(), maxBytes);
    if (held != nullptr && read.error == CallError::None) {
        *held = std::make_unique<OwnedFile<Descriptor>>(std::move(file));
    }
    return read;
}

CallError PosixFileCalls::List(const std::string& pathPrefix, std::vector<FolderEntry>& files) {
    files.clear();
    const std::string folder = FolderOf(pathPrefix);
    const std::string prefix =
        pathPrefix.substr(pathPrefix.find('/') == std::string::npos ? 0 : folder.size());
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        struct stat info = {};
        if (name.starts_with(prefix) && stat(entry->path().c_str(), &info) == 0 &&
            S_ISREG(info.st_mode)) {
            files.push_back(
                {name, {static_cast<std::uint64_t>(info.st_size), TicksOf(info.st_mtim)}});
        }
    }
    return error == std::errc::no_such_file_or_directory ? CallError::FolderMissing
                                                         : ErrorOf(error.value());
}

CallError PosixFileCalls::Open(const std::string& path, OpenMode mode,
                               std::unique_ptr<WritableFile>& file) {
    const bool isNew = mode == OpenMode::New;
    const int flags = isNew ? O_WRONLY | O_CREAT | O_EXCL : O_RDWR;
    Descriptor opened(open(path.c_str(), flags | O_CLOEXEC, 0666));
    if (opened.Get() < 0) {
        return isNew ? ErrorInFolder(-1) : ErrorIfNegative(-1);
    }
    const CallError error = LockWhole(opened.Get(), LOCK_EX);
    if (error == CallError::None) {
        file = std::make_unique<PosixFile>(std::move(opened));
    }
    return error;
}

CallError PosixFileCalls::Replace(const std::string& path, const std::string& replacement,
                                  const std::string& backup) {
    struct stat info = {};
    if (stat(path.c_str(), &info) != 0 || chmod(replacement.c_str(), info.st_mode & 07777) != 0) {
        return ErrorOf(errno);
    }
    // Only root can give files away; the rights of the file's group are of no use to another one.
    if (chown(replacement.c_str(), info.st_uid, info.st_gid) != 0 && errno != EPERM) {
        return ErrorOf(errno);
    }
    // Linux 3.15, renameat2: both names are exchanged in one step, so unlike on Windows there is a
    // file under `path` at every moment.
    const auto exchange = [&] {
        return renameat2(AT_FDCWD, replacement.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE);
    };
    if (exchange() != 0) {
        return errno == EINVAL ? CallError::Unsupported : ErrorOf(errno);
    }
    const CallError error = Move(replacement, backup, MoveMode::Overwrite);
    if (error != CallError::None && exchange() != 0) {
        return CallError::Other;
    }
    return error;
}

CallError PosixFileCalls::Move(const std::string& from, const std::string& to, MoveMode mode) {
    const unsigned flags = mode == MoveMode::KeepExisting ? RENAME_NOREPLACE : 0;
    return ErrorIfNegative(renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags));
}

std::shared_ptr<FileLock> PosixFileCalls::Lock(const std::string& name, unsigned milliseconds) {
    const std::string path = (fs::temp_directory_path() / (name + ".lock")).string();
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (std::chrono::steady_clock::now() < end) {
        Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
        if (file.Get() < 0) {
            return nullptr;
        }
        if (flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && IsStillThere(file.Get(), path)) {
            return std::make_shared<DescriptorLock>(std::move(file), path);
        }
        // flock has no time limit, so it is tried again every millisecond.
        Sleep(1);
    }
    return nullptr;
}

std::uint64_t PosixFileCalls::NowTicks() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return TicksOf(now);
}

CivilTime PosixFileCalls::LocalTime(std::uint64_t ticks) {
    const auto time = static_cast<std::time_t>(ticks / 10'000'000U);
    std::tm local = {};
    localtime_r(&time, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

}  // namespace

std::unique_ptr<FileCalls> MakeFileCalls() {
    return std::make_unique<PosixFileCalls>();
}

}  // namespace tamarind
