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

// An INI file as it stood at one moment. After a failed read the document is empty and `error` says
// why; for a missing file, too (IsMissing). `document` is never null and shared with others, which
// is why it cannot be changed.
struct IniSnapshot {
    std::shared_ptr<const IniDocument> document;
    FileError error = FileError::None;
    // False if the file was written in the half second before the read: a program that writes it
    // piece by piece may not be done.
    bool isSettled = true;
};

// The INI files that the program reads. What somebody holds is parsed once and read again only when
// the file has changed; nothing is kept alive here. Shared by all parts of the program; it must
// outlive them.
class IniFiles {
public:
    // `files` must outlive this object.
    explicit IniFiles(FileSystem& files);

    // The code page of files without a mark, if a caller names none.
    CodePage SystemCodePage() const { return m_systemCodePage; }
    void SetSystemCodePage(CodePage codePage) { m_systemCodePage = codePage; }

    // Compares size and time of the file with those of the last read, and reads it only if they
    // differ or nobody holds what was read then. A file that was younger than 2.1 seconds at that
    // read is always read again, since its next change may leave both the same.
    IniSnapshot Read(const std::string& path) { return Read(path, m_systemCodePage); }
    IniSnapshot Read(const std::string& path, CodePage codePage);

    // The disk below, for callers that replace or lock files.
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

// What a write has come to: whether the file could be read and replaced, and which edit was
// refused, if any. With either error the file is as it was, unless `aside` is not empty: then
// another program has written it meanwhile, and its text, which could not be merged with ours, is
// in the backup at that path.
struct WriteResult {
    FileError error = FileError::None;
    IniEdit refused = IniEdit::Unchanged;
    std::string aside;
    bool Succeeded() const { return error == FileError::None && refused == IniEdit::Unchanged; }
};

// Lets `edit` change a file and replaces it once, or not at all if nothing differs. An edit that is
// refused (IsRefused) ends it. Other copies of the program wait from the read to the replacement.
// If another program writes the file meanwhile, it all begins again with the new content: `edit`
// may be called several times and must not count its calls.
WriteResult EditIniFile(IniFiles& files, const std::string& path,
                        const std::function<IniEdit(IniDocument&)>& edit,
                        Backup backup = Backup::No);

// Collects writes to one INI file. Commit applies them in the order in which they were made, by one
// read and one replacement of the file. What was collected stays, so a failed Commit can be
// repeated.
class ProfileTransaction {
public:
    ProfileTransaction(IniFiles& files, std::string path);

    // As IniDocument::SetValue: the value is written as it is passed.
    void SetValue(std::string_view section, std::string_view key, std::string_view value);
    void DeleteValue(std::string_view section, std::string_view key);
    void DeleteSection(std::string_view section);

    bool IsEmpty() const { return m_writes.empty(); }
    // One refused write refuses all.
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
