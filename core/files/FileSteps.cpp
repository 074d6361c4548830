#include "core/files/FileSteps.h"

#include "core/files/Leftovers.h"

namespace tamarind {
namespace {

// Whether the error is likely to be gone after some milliseconds. AccessDenied is what Windows says
// of a file that is about to be deleted, too.
bool MayPass(CallError error) {
    return error == CallError::AccessDenied || error == CallError::Shared ||
           error == CallError::Locked || error == CallError::UnableToRemoveOld;
}

// A write of no bytes without an error would go on for ever; it means that nothing fits any more.
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

CallError WriteAndFlush(WritableFile& file, const std::string& bytes) {
    const CallError error = WriteAll(file, bytes);
    return error == CallError::None ? file.Flush() : error;
}

// NotVerified unless `read` has succeeded and gives `bytes`.
CallError Verify(const FileBytes& read, const std::string& bytes) {
    const bool isSame = read.error == CallError::None && read.bytes == bytes;
    return isSame ? CallError::None : CallError::NotVerified;
}

// Replaces the whole content of a file that is open in place, from its first byte, and reads it
// back.
CallError Overwrite(WritableFile& file, const std::string& bytes) {
    CallError error = WriteAll(file, bytes);
    if (error == CallError::None) {
        error = file.CutHere();
    }
    if (error == CallError::None) {
        error = file.Flush();
    }
    return error == CallError::None ? Verify(file.ReadAndRewind(FileSystem::kMaxFileBytes), bytes)
                                    : error;
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
        case CallError::Unreachable:
            return FileError::Unreachable;
        case CallError::BadName:
            return FileError::BadName;
        case CallError::Changed:
            return FileError::Changed;
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

FileBytes FileSteps::Read(const std::string& path, std::uint64_t maxBytes) {
    FileBytes read;
    Retry([&] {
        read = m_calls.Read(path, maxBytes);
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
    // Another machine may be writing the same file in a network folder, where the lock of this one
    // does not reach: each takes a name that is free.
    constexpr int kMaxNames = 100;
    CallError error = CallError::Exists;
    for (int number = 1; number <= kMaxNames && error == CallError::Exists; ++number) {
        temporary = LeftoverPath(path, LeftoverKind::New, bytes, number);
        error = WriteNew(temporary, bytes);
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

CallError FileSteps::WriteNew(const std::string& path, const std::string& bytes) {
    std::unique_ptr<WritableFile> file;
    CallError error = Retry([&] { return m_calls.Open(path, OpenMode::New, file); });
    if (error != CallError::None) {
        return error;
    }
    error = WriteAndFlush(*file, bytes);
    file.reset();
    if (error == CallError::None) {
        error = Verify(Read(path), bytes);
    }
    if (error != CallError::None) {
        Delete(path);
    }
    return error;
}

CallError FileSteps::WriteInPlace(const std::string& path, const std::string& bytes,
                                  const std::string& expected, bool& isWhole) {
    isWhole = true;
    std::unique_ptr<WritableFile> file;
    CallError error = Retry([&] { return m_calls.Open(path, OpenMode::InPlace, file); });
    if (error != CallError::None) {
        return error;
    }
    // Compared through the handle that keeps other writers out, so nothing comes in between.
    const FileBytes present = file->ReadAndRewind(FileSystem::kMaxFileBytes);
    if (present.error != CallError::None || present.bytes != expected) {
        return present.error == CallError::None ? CallError::Changed : present.error;
    }
    error = Overwrite(*file, bytes);
    if (error != CallError::None) {
        // Only to go back to the start of the file: nothing is read.
        file->ReadAndRewind(0);
        isWhole = Overwrite(*file, expected) == CallError::None;
    }
    return error;
}

}  // namespace tamarind
