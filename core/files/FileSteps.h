#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/files/FileCalls.h"

namespace tamarind {

// What callers of FileSystem are told of an error.
FileError FileErrorOf(CallError error);

// The folder of a path with its closing separator, "\" or "/"; empty if the path has no separator.
std::string FolderWithSeparator(const std::string& path);

// The steps that replacements and backups have in common, made of FileCalls. A virus scanner, an
// indexer or a cloud client opens files that have just changed; a call that fails because of that
// gets five more tries, after 10, 25, 50, 100 and 200 ms.
class FileSteps {
public:
    // `calls` must outlive this object.
    explicit FileSteps(FileCalls& calls) : m_calls(calls) {}

    FileCalls& Calls() { return m_calls; }
    // Calls once, and up to five times more while the error is one that may pass (AccessDenied,
    // Shared, Locked, UnableToRemoveOld); returns the last error. It blocks for at most 385 ms
    // besides the calls.
    CallError Retry(const std::function<CallError()>& call);

    // As FileCalls::Read, Move and Delete, with retries.
    FileBytes Read(const std::string& path, std::uint64_t maxBytes = FileSystem::kMaxFileBytes);
    CallError Move(const std::string& from, const std::string& to, MoveMode mode);
    CallError Delete(const std::string& path);  // a missing file is no error

    // Makes a new file beside `path` with a name of LeftoverKind::New, waits until the disk has it
    // and reads it back. `temporary` gets its path. On an error the file is deleted again.
    CallError WriteTemporary(const std::string& path, const std::string& bytes,
                             std::string& temporary);

    // Makes a file under the name `path` by way of a temporary one, so that it is never there half
    // written. On an error the temporary file is deleted.
    CallError WriteAndMove(const std::string& path, const std::string& bytes, MoveMode mode);

    // Overwrites an existing file that holds `expected`, waits until the disk has it and reads it
    // back. A file that holds anything else is not touched: the result is Changed. From the
    // comparison to the end no other program can write the file, but meanwhile it is not whole.
    // After any other error its old content has been written back; if that failed too, `isWhole` is
    // false.
    CallError WriteInPlace(const std::string& path, const std::string& bytes,
                           const std::string& expected, bool& isWhole);

private:
    CallError WriteNew(const std::string& path, const std::string& bytes);

    FileCalls& m_calls;
};

}  // namespace tamarind
