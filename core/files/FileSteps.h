#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/files/FileCalls.h"

namespace tamarind {

FileError FileErrorOf(CallError error);

// The folder of a path with its closing separator, which natively is "/"; empty without one.
std::string FolderWithSeparator(const std::string& path);

// The steps that replacements and backups have in common. A virus scanner, an indexer or a cloud
// client opens files that have just changed: a call that fails for such a reason gets five more
// tries, after 10, 25, 50, 100 and 200 ms.
class FileSteps {
public:
    explicit FileSteps(FileCalls& calls) : m_calls(calls) {}

    FileCalls& Calls() { return m_calls; }
    CallError Retry(const std::function<CallError()>& call);

    FileBytes Read(const std::string& path, std::uint64_t maxBytes = FileSystem::kMaxFileBytes);
    CallError Move(const std::string& from, const std::string& to, MoveMode mode);
    CallError Delete(const std::string& path);  // a missing file is no error

    // Makes a new file beside `path` under a name of LeftoverKind::New, waits until the disk has it
    // and reads it back. On an error there is none.
    CallError WriteTemporary(const std::string& path, const std::string& bytes,
                             std::string& temporary);

    // Makes a file of that name by way of a temporary one.
    CallError WriteAndMove(const std::string& path, const std::string& bytes, MoveMode mode);

    // Overwrites an existing file that holds `expected`, waits until the disk has it and reads it
    // back; a file that holds something else stays, with Changed. The file is not whole meanwhile;
    // after another error it holds what it did, or `isWhole` is false. No other program writes it
    // from the comparison to the end.
    CallError WriteInPlace(const std::string& path, const std::string& bytes,
                           const std::string& expected, bool& isWhole);

private:
    CallError WriteNew(const std::string& path, const std::string& bytes);

    FileCalls& m_calls;
};

}  // namespace tamarind
