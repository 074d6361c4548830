#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/FileSystem.h"

namespace tamarind {

// Files in memory, for tests: counts what is asked of it, and its clock and errors are set from
// outside. Letter case in paths does not matter. There are no folders: every path can be written
// unless an error is set for it.
class MemoryFileSystem final : public FileSystem {
public:
    std::vector<std::string> folders;  // that were made
    // What has been asked so far; a test may set them back to 0.
    int stamps = 0;
    int reads = 0;
    int replaces = 0;  // failed ones included

    // The clock in 100 ns units. It stands still unless a test moves it.
    std::uint64_t now = 1'000'000'000'000;
    void Wait(double seconds) { now += static_cast<std::uint64_t>(seconds * 10'000'000.0); }

    // Writes a file as another program would, with the present time as its stamp. A file that
    // has been there for longer: Put, then Wait.
    void Put(const std::string& path, std::string bytes) {
        m_files[Fold(path)] = {std::move(bytes), now};
    }
    void Remove(const std::string& path) { m_files.erase(Fold(path)); }

    bool Has(const std::string& path) const { return m_files.count(Fold(path)) != 0; }
    std::size_t Count() const { return m_files.size(); }
    // The content of a file, empty for a missing one.
    std::string BytesOf(const std::string& path) const {
        const auto found = m_files.find(Fold(path));
        return found == m_files.end() ? std::string() : found->second.bytes;
    }

    // From now on reading or replacing the path fails so; FileError::None ends that.
    void FailReads(const std::string& path, FileError error) { m_readErrors[Fold(path)] = error; }
    void FailReplaces(const std::string& path, FileError error) {
        m_replaceErrors[Fold(path)] = error;
    }

    std::optional<FileStamp> Stamp(const std::string& path) override {
        ++stamps;
        const auto found = m_files.find(Fold(path));
        return found == m_files.end() ? std::nullopt : std::optional(StampOf(found->second));
    }

    FileContent Read(const std::string& path, std::uint64_t maxBytes) override {
        ++reads;
        FileContent content;
        content.error = ErrorFor(m_readErrors, path);
        const auto found = m_files.find(Fold(path));
        if (content.error == FileError::None && found == m_files.end()) {
            content.error = FileError::NotFound;
        }
        if (content.error != FileError::None) {
            return content;
        }
        content.stamp = StampOf(found->second);
        if (content.stamp.size > maxBytes) {
            content.error = FileError::TooLarge;
            return content;
        }
        content.bytes = found->second.bytes;
        return content;
    }

    FileError Replace(const std::string& path, const std::string& bytes) override {
        ++replaces;
        const FileError error = ErrorFor(m_replaceErrors, path);
        if (error == FileError::None) {
            Put(path, bytes);
        }
        return error;
    }

    FileError ReplaceWithBackup(const std::string& path, const std::string& bytes) override {
        const bool isNew = !Has(path);
        const std::string old = BytesOf(path);
        const FileError error = Replace(path, bytes);
        std::vector<BackupFile>& backups = m_backups[Fold(path)];
        if (error == FileError::None && !isNew &&
            (backups.empty() || BytesOf(backups.front().path) != old)) {
            const std::string number = std::to_string(backups.size() + 1);
            BackupFile backup = {path + " backups\\" + number, "2026-11-21 06.45.0" + number,
                                 old.size(), backups.empty()};
            Put(backup.path, old);
            backups.insert(backups.begin(), std::move(backup));
        }
        return error;
    }

    std::vector<BackupFile> ListBackups(const std::string& path) override {
        return m_backups[Fold(path)];
    }

    FileError CheckReplace(const std::string& path) override {
        return ErrorFor(m_replaceErrors, path);
    }

    FileError MakeFolder(const std::string& path) override {
        folders.push_back(path);
        return FileError::None;
    }

    std::shared_ptr<FileLock> Lock(const std::string&) override {
        return std::make_shared<FileLock>();
    }

    std::uint64_t NowTicks() override { return now; }

private:
    struct File {
        std::string bytes;
        std::uint64_t modifiedTicks = 0;
    };
    using Errors = std::map<std::string, FileError>;

    static std::string Fold(std::string path) {
        for (char& c : path) {
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
        }
        return path;
    }
    static FileStamp StampOf(const File& file) { return {file.bytes.size(), file.modifiedTicks}; }
    static FileError ErrorFor(const Errors& errors, const std::string& path) {
        const auto found = errors.find(Fold(path));
        return found == errors.end() ? FileError::None : found->second;
    }

    std::map<std::string, File> m_files;
    std::map<std::string, std::vector<BackupFile>> m_backups;  // by path
    Errors m_readErrors;
    Errors m_replaceErrors;
};

}  // namespace tamarind
