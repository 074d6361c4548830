#include <windows.h>

#include "core/FileSystem.h"
#include "core/UniqueHandle_win32.h"
#include "core/WideText_win32.h"

namespace tamarind {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::uint64_t Join(DWORD high, DWORD low) {
    return (std::uint64_t{high} << 32) | low;
}

std::uint64_t TicksOf(const FILETIME& time) {
    return Join(time.dwHighDateTime, time.dwLowDateTime);
}

FileError ErrorOf(DWORD code) {
    switch (code) {
        case ERROR_SUCCESS:
            return FileError::None;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
            return FileError::NotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_NOT_READY:
            return FileError::FolderMissing;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_PRIVILEGE_NOT_HELD:
            return FileError::AccessDenied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_UNABLE_TO_REMOVE_REPLACED:
            return FileError::InUse;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return FileError::DiskFull;
        default:
            return FileError::Other;
    }
}

FileError LastError() {
    return ErrorOf(GetLastError());
}

bool WriteAll(HANDLE file, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto rest = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1U << 20));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data() + done, rest, &written, nullptr)) {
            return false;
        }
        if (written == 0) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
        done += written;
    }
    return FlushFileBuffers(file) != 0;
}

FileError WriteNewFile(const std::wstring& path, const std::string& bytes) {
    UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        return LastError();
    }
    return WriteAll(file.Get(), bytes) ? FileError::None : LastError();
}

// Puts the finished temporary file in the place of the real one.
FileError MoveIntoPlace(const std::wstring& temporary, const std::wstring& target, bool exists) {
    if (exists) {
        if (ReplaceFileW(target.c_str(), temporary.c_str(), nullptr,
                         REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
            return FileError::None;
        }
        // The other function would say no more than that access is denied.
        if (LastError() == FileError::InUse) {
            return FileError::InUse;
        }
    }
    const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(temporary.c_str(), target.c_str(), flags) ? FileError::None : LastError();
}

}  // namespace

std::optional<FileStamp> DiskFileSystem::Stamp(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Widen(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::nullopt;
    }
    return FileStamp{Join(data.nFileSizeHigh, data.nFileSizeLow), TicksOf(data.ftLastWriteTime)};
}

FileContent DiskFileSystem::Read(const std::string& path, std::uint64_t maxBytes) {
    FileContent content;
    const std::wstring widePath = Widen(path);
    const UniqueFile file(CreateFileW(widePath.c_str(), GENERIC_READ, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    BY_HANDLE_FILE_INFORMATION info;
    if (!file || !GetFileInformationByHandle(file.Get(), &info)) {
        content.error = LastError();
        const DWORD attributes = GetFileAttributesW(widePath.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            content.error = FileError::IsFolder;
        }
        return content;
    }
    content.stamp = {Join(info.nFileSizeHigh, info.nFileSizeLow), TicksOf(info.ftLastWriteTime)};
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        content.error = FileError::IsFolder;
        return content;
    }
    if (content.stamp.size > maxBytes) {
        content.error = FileError::TooLarge;
        return content;
    }
    content.bytes.resize(static_cast<std::size_t>(content.stamp.size));
    std::size_t done = 0;
    while (done < content.bytes.size()) {
        const auto rest =
            static_cast<DWORD>(std::min<std::size_t>(content.bytes.size() - done, 1U << 26));
        DWORD read = 0;
        if (!ReadFile(file.Get(), content.bytes.data() + done, rest, &read, nullptr)) {
            content.error = LastError();
            content.bytes.clear();
            return content;
        }
        if (read == 0) {
            break;
        }
        done += read;
    }
    content.bytes.resize(done);
    return content;
}

FileError DiskFileSystem::Replace(const std::string& path, const std::string& bytes) {
    const std::wstring target = Widen(path);
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return FileError::IsFolder;
    }
    if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return FileError::ReadOnly;
    }
    const std::wstring temporary = target + L".~" + std::to_wstring(GetCurrentProcessId());
    FileError error = WriteNewFile(temporary, bytes);
    if (error == FileError::None) {
        error = MoveIntoPlace(temporary, target, exists);
    }
    if (error != FileError::None) {
        DeleteFileW(temporary.c_str());
    }
    return error;
}

std::uint64_t DiskFileSystem::NowTicks() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return TicksOf(now);
}

}  // namespace tamarind
