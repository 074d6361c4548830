#include "core/FileSteps.h"

#include <cstdio>

namespace tamarind {
namespace {

constexpr std::string_view kTemporaryMark = FileSteps::kTemporaryMark;
constexpr std::size_t kNumberDigits = 8;

bool IsTemporary(std::string_view name) {
    if (name.size() <= kTemporaryMark.size() + kNumberDigits) {
        return false;
    }
    const std::string_view end = name.substr(name.size() - kTemporaryMark.size() - kNumberDigits);
    return end.substr(0, kTemporaryMark.size()) == kTemporaryMark &&
           end.find_first_not_of("0123456789abcdef", kTemporaryMark.size()) ==
               std::string_view::npos;
}

bool MayPass(CallError error) {
    return error == CallError::AccessDenied || error == CallError::Shared ||
           error == CallError::Locked || error == CallError::UnableToRemoveOld;
}

CallError WriteAll(WritableFile& file, std::string_view bytes) {
    while (!bytes.empty()) {
        std::size_t written = 0;
        const CallError error = file.Write(bytes, written);
        if (error != CallError::None) {
            return error;
        }
        if (written == 0) {
            return CallError::DiskFull;
        }
        bytes.remove_prefix(written);
    }
    return CallError::None;
}

}  // namespace

FileError FileErrorOf(CallError error) {
    switch (error) {
        case CallError::None:
            return FileError::None;
        case CallError::NotFound:
        case CallError::LinkToNothing:
            return FileError::NotFound;
        case CallError::FolderMissing:
            return FileError::FolderMissing;
        case CallError::IsFolder:
            return FileError::IsFolder;
        case CallError::AccessDenied:
            return FileError::AccessDenied;
        case CallError::ReadOnly:
            return FileError::ReadOnly;
        case CallError::Shared:
        case CallError::Locked:
        case CallError::UnableToRemoveOld:
            return FileError::InUse;
        case CallError::TooLarge:
            return FileError::TooLarge;
        case CallError::DiskFull:
            return FileError::DiskFull;
        case CallError::NotVerified:
            return FileError::NotVerified;
        case CallError::Exists:
        case CallError::Unsupported:
        case CallError::UnableToMoveNew:
        case CallError::UnableToMoveNewAtAll:
        case CallError::Other:
            break;
    }
    return FileError::Other;
}

std::string FolderWithSeparator(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

CallError FileSteps::Retry(const std::function<CallError()>& call) {
    CallError error = call();
    for (const unsigned wait : {10U, 25U, 50U, 100U, 200U}) {
        if (!MayPass(error)) {
            break;
        }
        m_calls.Sleep(wait);
        error = call();
    }
    return error;
}

FileBytes FileSteps::Read(const std::string& path) {
    FileBytes read;
    Retry([&] {
        read = m_calls.Read(path, FileSystem::kMaxFileBytes);
        return read.error;
    });
    return read;
}

CallError FileSteps::Move(const std::string& from, const std::string& to, MoveMode mode) {
    return Retry([&] { return m_calls.Move(from, to, mode); });
}

CallError FileSteps::Delete(const std::string& path) {
    const CallError error = Retry([&] { return m_calls.Delete(path); });
    return error == CallError::NotFound ? CallError::None : error;
}

CallError FileSteps::WriteTemporary(const std::string& path, const std::string& bytes,
                                    std::string& temporary) {
    // Another machine may be at the same file of a network folder: no two use one name.
    constexpr int kMaxNames = 100;
    auto number = static_cast<unsigned>(m_calls.NowTicks());
    CallError error = CallError::Exists;
    for (int name = 0; name < kMaxNames && error == CallError::Exists; ++name) {
        char digits[kNumberDigits + 1];
        std::snprintf(digits, sizeof(digits), "%08x", number++);
        temporary = path + std::string(kTemporaryMark) + digits;
        error = Write(temporary, OpenMode::New, bytes);
    }
    return error;
}

CallError FileSteps::WriteAndMove(const std::string& path, const std::string& bytes,
                                  MoveMode mode) {
    std::string temporary;
    CallError error = WriteTemporary(path, bytes, temporary);
    if (error == CallError::None) {
        error = Move(temporary, path, mode);
        if (error != CallError::None) {
            Delete(temporary);
        }
    }
    return error;
}

CallError FileSteps::WriteInPlace(const std::string& path, const std::string& bytes) {
    return Write(path, OpenMode::InPlace, bytes);
}

CallError FileSteps::Write(const std::string& path, OpenMode mode, const std::string& bytes) {
    std::unique_ptr<WritableFile> file;
    CallError error = Retry([&] { return m_calls.Open(path, mode, file); });
    if (error != CallError::None) {
        return error;
    }
    error = WriteAll(*file, bytes);
    if (error == CallError::None && mode == OpenMode::InPlace) {
        error = file->CutHere();
    }
    if (error == CallError::None) {
        error = file->Flush();
    }
    file.reset();
    if (error == CallError::None) {
        const FileBytes read = Read(path);
        const bool isSame = read.error == CallError::None && read.bytes == bytes;
        error = isSame ? CallError::None : CallError::NotVerified;
    }
    if (error != CallError::None && mode == OpenMode::New) {
        Delete(path);
    }
    return error;
}

void FileSteps::RemoveTemporaries(const std::string& folder,
                                  const std::vector<FolderEntry>& files) {
    for (const FolderEntry& file : files) {
        if (IsTemporary(file.name)) {
            Delete(folder + file.name);
        }
    }
}

}  // namespace tamarind
