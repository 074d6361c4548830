#include <windows.h>

#include "core/files/FileCalls.h"
#include "core/system/LongPath_win32.h"
#include "core/system/UniqueHandle_win32.h"

namespace tamarind {
namespace {

constexpr DWORD kErrorDiskQuotaExceeded = 1295;  // missing in the headers
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The two halves of a 64-bit number.
std::uint64_t Join(DWORD high, DWORD low) {
    return (std::uint64_t{high} << 32) | low;
}

// In units of 100 ns since 1601 (Microsoft: FILETIME).
std::uint64_t TicksOf(const FILETIME& time) {
    return Join(time.dwHighDateTime, time.dwLowDateTime);
}

// Translates a code of GetLastError. Codes that the callers do not treat differently become Other.
CallError ErrorOf(DWORD code) {
    switch (code) {
        case ERROR_SUCCESS:
            return CallError::None;
        case ERROR_FILE_NOT_FOUND:
            return CallError::NotFound;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
            return CallError::BadName;
        case ERROR_PATH_NOT_FOUND:
            return CallError::FolderMissing;
        case ERROR_INVALID_DRIVE:
        case ERROR_NOT_READY:
        case ERROR_REM_NOT_LIST:
        case ERROR_BAD_NETPATH:
        case ERROR_DEV_NOT_EXIST:
        case ERROR_UNEXP_NET_ERR:
        case ERROR_NETNAME_DELETED:
        case ERROR_BAD_NET_NAME:
        case ERROR_SEM_TIMEOUT:
        case ERROR_NO_MEDIA_IN_DRIVE:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_CONNECTION_UNAVAIL:
        case ERROR_NO_NET_OR_BAD_PATH:
        case ERROR_NO_NETWORK:
        case ERROR_NETWORK_UNREACHABLE:
        case ERROR_HOST_UNREACHABLE:
            return CallError::Unreachable;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return CallError::Exists;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_PRIVILEGE_NOT_HELD:
            return CallError::AccessDenied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return CallError::Shared;
        case ERROR_LOCK_VIOLATION:
            return CallError::Locked;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kErrorDiskQuotaExceeded:
            return CallError::DiskFull;
        case ERROR_INVALID_FUNCTION:
        case ERROR_NOT_SUPPORTED:
        case ERROR_INVALID_PARAMETER:
        case ERROR_CALL_NOT_IMPLEMENTED:
        case ERROR_INVALID_LEVEL:
        case ERROR_NOT_SAME_DEVICE:
            return CallError::Unsupported;
        case ERROR_UNABLE_TO_REMOVE_REPLACED:
            return CallError::UnableToRemoveOld;
        case ERROR_UNABLE_TO_MOVE_REPLACEMENT:
            return CallError::UnableToMoveNew;
        case ERROR_UNABLE_TO_MOVE_REPLACEMENT_2:
            return CallError::UnableToMoveNewAtAll;
        default:
            return CallError::Other;
    }
}

// For calls that return FALSE on an error.
CallError ErrorUnless(BOOL succeeded) {
    return succeeded ? CallError::None : ErrorOf(GetLastError());
}

class WinFile final : public WritableFile {
public:
    explicit WinFile(UniqueFile file) : m_file(std::move(file)) {}

    FileBytes ReadAndRewind(std::uint64_t maxBytes) override;
    CallError Write(std::string_view bytes, std::size_t& written) override {
        // At most 1 MB a call; the caller goes on with the rest.
        const auto count = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 20));
        DWORD done = 0;
        const BOOL succeeded = WriteFile(m_file.Get(), bytes.data(), count, &done, nullptr);
        written = done;
        return ErrorUnless(succeeded);
    }
    CallError CutHere() override { return ErrorUnless(SetEndOfFile(m_file.Get())); }
    CallError Flush() override { return ErrorUnless(FlushFileBuffers(m_file.Get())); }

private:
    UniqueFile m_file;
};

// Owned by the thread that has waited for it: it must be destroyed in the same one.
class MutexLock final : public FileLock {
public:
    explicit MutexLock(UniqueObject mutex) : m_mutex(std::move(mutex)) {}
    ~MutexLock() override { ReleaseMutex(m_mutex.Get()); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

private:
    UniqueObject m_mutex;
};

// Opens a file or a folder just to ask for its attributes; empty on an error.
UniqueFile OpenToAsk(const std::wstring& path, DWORD flags) {
    // FILE_READ_ATTRIBUTES succeeds for a file that another program does not share. Folders need
    // FILE_FLAG_BACKUP_SEMANTICS (Microsoft: CreateFileW).
    return UniqueFile(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

struct HandleFacts {
    FileStamp stamp;
    std::uint32_t links = 1;
    DWORD attributes = 0;
};

// False on an error, with its code in GetLastError. Two calls are cheaper than
// GetFileInformationByHandle, which also asks for the volume.
bool AskHandle(HANDLE file, HandleFacts& facts) {
    FILE_BASIC_INFO basic;
    FILE_STANDARD_INFO standard;
    if (!GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof(basic)) ||
        !GetFileInformationByHandleEx(file, FileStandardInfo, &standard, sizeof(standard))) {
        return false;
    }
    facts.stamp = {static_cast<std::uint64_t>(standard.EndOfFile.QuadPart),
                   static_cast<std::uint64_t>(basic.LastWriteTime.QuadPart)};
    facts.links = standard.NumberOfLinks;
    facts.attributes = basic.FileAttributes;
    return true;
}

// Whether both handles are of one file, by volume and file index.
bool AreSame(HANDLE left, HANDLE right) {
    BY_HANDLE_FILE_INFORMATION a;
    BY_HANDLE_FILE_INFORMATION b;
    return GetFileInformationByHandle(left, &a) && GetFileInformationByHandle(right, &b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

// Replaces `path` by the path after all links. Some volumes (RAM disks, drives mounted by other
// software) have no volume name, and GetFinalPathNameByHandleW fails for them. There the path
// stands for itself, unless it is a link: then the handle of the link and that of its target are of
// two different files, and the result is Unsupported.
CallError FinalPathOf(HANDLE file, std::wstring& path) {
    std::wstring found(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetFinalPathNameByHandleW(file, found.data(), static_cast<DWORD>(found.size()),
                                               FILE_NAME_NORMALIZED)) >= found.size()) {
        found.resize(length + 1);
    }
    if (length > 0) {
        found.resize(length);
        path = found;
        return CallError::None;
    }
    const UniqueFile itself = OpenToAsk(path, FILE_FLAG_OPEN_REPARSE_POINT);
    return itself && AreSame(file, itself.Get()) ? CallError::None : CallError::Unsupported;
}

class WinFileCalls final : public FileCalls {
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
        return ErrorUnless(DeleteFileW(LongPath(path).c_str()));
    }
    CallError MakeFolder(const std::string& path) override {
        return ErrorUnless(CreateDirectoryW(LongPath(path).c_str(), nullptr));
    }
    std::shared_ptr<FileLock> Lock(const std::string& name, unsigned milliseconds) override;
    std::uint64_t NowTicks() override;
    CivilTime LocalTime(std::uint64_t ticks) override;
    void Sleep(unsigned milliseconds) override { ::Sleep(milliseconds); }
};

FileFacts WinFileCalls::Inspect(const std::string& path) {
    FileFacts facts;
    std::wstring finalPath = LongPath(path);
    const UniqueFile file = OpenToAsk(finalPath, 0);
    HandleFacts asked;
    if (!file || !AskHandle(file.Get(), asked)) {
        facts.error = ErrorOf(GetLastError());
    } else {
        facts.links = asked.links;
        facts.isFolder = (asked.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        facts.isReadOnly = (asked.attributes & FILE_ATTRIBUTE_READONLY) != 0;
        facts.error = FinalPathOf(file.Get(), finalPath);
    }
    if (facts.error == CallError::NotFound &&
        GetFileAttributesW(finalPath.c_str()) != INVALID_FILE_ATTRIBUTES) {
        facts.error = CallError::LinkToNothing;
    }
    facts.finalPath = Narrow(PlainPath(finalPath));
    return facts;
}

std::optional<FileStamp> WinFileCalls::Stamp(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(LongPath(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::nullopt;
    }
    return FileStamp{Join(data.nFileSizeHigh, data.nFileSizeLow), TicksOf(data.ftLastWriteTime)};
}

// Fills `bytes`, whose size says how much to read, and shortens it at an early end of the file.
CallError ReadAll(HANDLE file, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto rest = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1U << 26));
        DWORD count = 0;
        if (!ReadFile(file, bytes.data() + done, rest, &count, nullptr)) {
            bytes.clear();
            return ErrorOf(GetLastError());
        }
        if (count == 0) {
            break;
        }
        done += count;
    }
    bytes.resize(done);
    return CallError::None;
}

// From the present position of the handle.
FileBytes ReadHandle(HANDLE file, std::uint64_t maxBytes) {
    FileBytes read;
    HandleFacts asked;
    if (!AskHandle(file, asked)) {
        read.error = ErrorOf(GetLastError());
        return read;
    }
    read.stamp = asked.stamp;
    read.links = asked.links;
    if ((asked.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        read.error = CallError::IsFolder;
    } else if (read.stamp.size > maxBytes) {
        read.error = CallError::TooLarge;
    } else {
        read.bytes.resize(static_cast<std::size_t>(read.stamp.size));
        read.error = ReadAll(file, read.bytes);
    }
    return read;
}

FileBytes WinFile::ReadAndRewind(std::uint64_t maxBytes) {
    if (!SetFilePointerEx(m_file.Get(), {}, nullptr, FILE_BEGIN)) {
        FileBytes read;
        read.error = ErrorOf(GetLastError());
        return read;
    }
    FileBytes read = ReadHandle(m_file.Get(), maxBytes);
    SetFilePointerEx(m_file.Get(), {}, nullptr, FILE_BEGIN);
    return read;
}

// FILE_SHARE_DELETE lets others rename or replace the file meanwhile, which does not change what
// this handle reads. Without FILE_SHARE_WRITE it fails while anybody has the file open for writing.
FileBytes WinFileCalls::Read(const std::string& path, std::uint64_t maxBytes,
                             std::unique_ptr<HeldFile>* held) {
    const std::wstring widePath = LongPath(path);
    UniqueFile file(CreateFileW(widePath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) {
        FileBytes read;
        read.error = ErrorOf(GetLastError());
        // CreateFileW says ERROR_ACCESS_DENIED for a folder.
        const DWORD attributes = GetFileAttributesW(widePath.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            read.error = CallError::IsFolder;
        }
        return read;
    }
    FileBytes read = ReadHandle(file.Get(), maxBytes);
    if (held != nullptr) {
        *held = std::make_unique<OwnedFile<UniqueFile>>(std::move(file));
    }
    return read;
}

CallError WinFileCalls::List(const std::string& pathPrefix, std::vector<FolderEntry>& files) {
    files.clear();
    WIN32_FIND_DATAW data;
    // FindFirstFileExW also compares short names, but a wrong match does no harm: the callers parse
    // names.
    const std::wstring pattern = LongPath(pathPrefix + "*");
    const UniqueSearch search(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data,
                                               FindExSearchNameMatch, nullptr, 0));
    if (!search) {
        const DWORD code = GetLastError();
        return code == ERROR_FILE_NOT_FOUND ? CallError::None : ErrorOf(code);
    }
    do {
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(
                {Narrow(data.cFileName),
                 {Join(data.nFileSizeHigh, data.nFileSizeLow), TicksOf(data.ftLastWriteTime)}});
        }
    } while (FindNextFileW(search.Get(), &data));
    const DWORD code = GetLastError();
    return code == ERROR_NO_MORE_FILES ? CallError::None : ErrorOf(code);
}

CallError WinFileCalls::Open(const std::string& path, OpenMode mode,
                             std::unique_ptr<WritableFile>& file) {
    const bool isNew = mode == OpenMode::New;
    UniqueFile opened(
        CreateFileW(LongPath(path).c_str(), GENERIC_WRITE | (isNew ? 0 : GENERIC_READ),
                    isNew ? 0 : FILE_SHARE_READ, nullptr, isNew ? CREATE_NEW : OPEN_EXISTING,
                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!opened) {
        return ErrorOf(GetLastError());
    }
    file = std::make_unique<WinFile>(std::move(opened));
    return CallError::None;
}

// Microsoft: ReplaceFileW. What the three errors of its own leave behind:
//
//   ERROR_UNABLE_TO_REMOVE_REPLACED       both files have their names
//   ERROR_UNABLE_TO_MOVE_REPLACEMENT      the old file may have the name of the backup
//   ERROR_UNABLE_TO_MOVE_REPLACEMENT_2    the old file has the name of the backup
//
// IGNORE_MERGE_ERRORS: a file system that cannot copy all attributes and rights is no reason not to
// save.
CallError WinFileCalls::Replace(const std::string& path, const std::string& replacement,
                                const std::string& backup) {
    return ErrorUnless(ReplaceFileW(LongPath(path).c_str(), LongPath(replacement).c_str(),
                                    LongPath(backup).c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS,
                                    nullptr, nullptr));
}

CallError WinFileCalls::Move(const std::string& from, const std::string& to, MoveMode mode) {
    const DWORD flags = mode == MoveMode::Overwrite
                            ? MOVEFILE_WRITE_THROUGH | MOVEFILE_REPLACE_EXISTING
                            : MOVEFILE_WRITE_THROUGH;
    return ErrorUnless(MoveFileExW(LongPath(from).c_str(), LongPath(to).c_str(), flags));
}

std::shared_ptr<FileLock> WinFileCalls::Lock(const std::string& name, unsigned milliseconds) {
    // Open to everyone, so that copies of the program started as administrator, by other users and
    // in other sessions wait for each other. They ask for the right to wait and nothing more.
    SECURITY_DESCRIPTOR everyone;
    InitializeSecurityDescriptor(&everyone, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&everyone, TRUE, nullptr, FALSE);
    SECURITY_ATTRIBUTES attributes = {sizeof(attributes), &everyone, FALSE};
    UniqueObject mutex(
        CreateMutexExW(&attributes, Widen("Global\\" + name).c_str(), 0, SYNCHRONIZE));
    if (!mutex) {
        return nullptr;
    }
    // WAIT_ABANDONED: the owner was killed, and the mutex is ours. What it left unfinished shows on
    // the disk, where Leftovers finds it.
    const DWORD result = WaitForSingleObject(mutex.Get(), milliseconds);
    const bool isOurs = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return isOurs ? std::make_shared<MutexLock>(std::move(mutex)) : nullptr;
}

std::uint64_t WinFileCalls::NowTicks() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return TicksOf(now);
}

CivilTime WinFileCalls::LocalTime(std::uint64_t ticks) {
    const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME universal;
    SYSTEMTIME local;
    if (!FileTimeToSystemTime(&time, &universal) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) {
        return {};
    }
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

}  // namespace

std::unique_ptr<FileCalls> MakeFileCalls() {
    return std::make_unique<WinFileCalls>();
}

}  // namespace tamarind
