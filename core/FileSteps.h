#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/FileCalls.h"

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

    FileBytes Read(const std::string& path);
    CallError Move(const std::string& from, const std::string& to, MoveMode mode);
    CallError Delete(const std::string& path);  // a missing file is no error

    // Makes a new file beside `path`, waits until the disk has it and reads it back. On an error
    // there is none.
    CallError WriteTemporary(const std::string& path, const std::string& bytes,
                             std::string& temporary);

    // Makes a file of that name by way of a temporary one.
    CallError WriteAndMove(const std::string& path, const std::string& bytes, MoveMode mode);

    // Overwrites an existing file, waits until the disk has it and reads it back. The file is not
    // whole meanwhile, nor after an error.
    CallError WriteInPlace(const std::string& path, const std::string& bytes);

    // Deletes those of a folder's files that WriteTemporary has made and a crash has left.
    void RemoveTemporaries(const std::string& folder, const std::vector<FolderEntry>& files);

    // Stands between the name of the file and a number of eight hexadecimal digits.
    static constexpr std::string_view kTemporaryMark = ".~new-";

private:
    CallError Write(const std::string& path, OpenMode mode, const std::string& bytes);

    FileCalls& m_calls;
};

}  // namespace tamarind
