#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/files/FileSystem.h"
#include "core/ini/IniDocument.h"

namespace tamarind {

// An INI file as it stood at one moment. After a failed read the document is empty and `error`
// says why; a missing file reads as an empty one, too.
struct IniSnapshot {
    std::shared_ptr<const IniDocument> document;
    FileError error = FileError::None;
    // The file was not written in the half second before it was read: whoever writes it piece by
    // piece is done.
    bool isSettled = true;
};

// The INI files of the program. What somebody holds is parsed once and read again only when the
// file has changed; nothing is kept alive here.
class IniFiles {
public:
    explicit IniFiles(FileSystem& files);

    // The code page of files without a mark, where a caller names none.
    CodePage SystemCodePage() const { return m_systemCodePage; }
    void SetSystemCodePage(CodePage codePage) { m_systemCodePage = codePage; }

    // Checks size and time of the file and reads it only if they differ from those of the last
    // read, or nobody holds what was read then. A file that was younger than 2.1 seconds at that
    // read is always read again, since its next change may leave both the same.
    IniSnapshot Read(const std::string& path) { return Read(path, m_systemCodePage); }
    IniSnapshot Read(const std::string& path, CodePage codePage);

    FileSystem& Files() { return m_files; }

private:
    struct Entry {
        std::weak_ptr<const IniDocument> document;
        FileStamp stamp;
        bool isTrusted = false;
    };

    FileSystem& m_files;
    CodePage m_systemCodePage;
    std::map<std::pair<std::string, CodePage>, Entry> m_entries;
    std::shared_ptr<const IniDocument> m_empty;
};

// What a transaction came to: whether the file was replaced or needed no change, and which edit
// was refused, if any. With an error of either kind the file stands as it was, unless `aside` names
// the backup with another program's text that could not be brought together with ours.
struct WriteResult {
    FileError error = FileError::None;
    IniEdit refused = IniEdit::Unchanged;
    std::string aside;
    bool Succeeded() const { return error == FileError::None && refused == IniEdit::Unchanged; }
};

// Reads the file once, lets `edit` change it and replaces it once, or not at all where nothing
// differs. An edit that is refused ends it. Other copies of the program wait from the read to the
// replacement; where another program writes the file meanwhile it all begins again, so that of each
// key the newer write stays and `edit` may be called more than once.
WriteResult EditIniFile(IniFiles& files, const std::string& path,
                        const std::function<IniEdit(IniDocument&)>& edit,
                        Backup backup = Backup::No);

// Collects writes to one INI file. Commit reads the file once, applies the writes in the order in
// which they were made, and replaces the file once, or not at all where nothing differs.
class ProfileTransaction {
public:
    ProfileTransaction(IniFiles& files, std::string path);

    // As cProfile::WriteStringValue, but without trimming: the value is written as it is passed.
    void SetValue(std::string_view section, std::string_view key, std::string_view value);
    void DeleteValue(std::string_view section, std::string_view key);
    void DeleteSection(std::string_view section);

    bool IsEmpty() const { return m_writes.empty(); }
    WriteResult Commit();

private:
    enum class Action { SetValue, DeleteValue, DeleteSection };
    struct Write {
        Action action;
        std::string section;
        std::string key;
        std::string value;
    };

    static IniEdit Apply(IniDocument& document, const Write& write);

    IniFiles& m_files;
    std::string m_path;
    std::vector<Write> m_writes;
};

}  // namespace tamarind
