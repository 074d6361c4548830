#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/files/FileSystem.h"

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

    // Another program's turn: before a read or a replacement of a path, and in the middle of the
    // next replacement, where it gives what the file that was moved aside holds by then.
    std::function<void(const std::string& path)> beforeRead;
    std::function<void(const std::string& path)> beforeExchange;
    std::function<FileState(const std::string& path)> whileAside;

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
        const FileError error = ErrorFor(m_readErrors, path);
        const bool isFound = found != m_files.end() && error != FileError::NotFound &&
                             error != FileError::Unreachable;
        return isFound ? std::optional(StampOf(found->second)) : std::nullopt;
    }

    FileContent Read(const std::string& path, std::uint64_t maxBytes) override {
        ++reads;
        if (beforeRead) {
            beforeRead(path);
        }
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

    ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                           const FileState& expected, Backup backup) override {
        ++replaces;
        if (beforeExchange) {
            beforeExchange(path);
        }
        ReplaceResult result;
        result.error = ErrorFor(m_replaceErrors, path);
        if (result.error != FileError::None) {
            return result;
        }
        const FileState old = Has(path) ? FileState(BytesOf(path)) : FileState();
        if (old != expected) {
            result.error = FileError::Changed;
            return result;
        }
        FileState aside = old;
        if (whileAside) {
            aside = std::exchange(whileAside, nullptr)(path);
        }
        if (aside && (backup == Backup::Yes || aside != old)) {
            result.aside = Keep(path, *aside);
        }
        if (aside != old) {
            result.foreign = aside;
        }
        Put(path, bytes);
        return result;
    }

    std::vector<BackupFile> ListBackups(const std::string& path) override {
        return m_backups[Fold(path)];
    }

    FileError DeleteBackup(const std::string& path) override {
        Remove(path);
        for (auto& [file, backups] : m_backups) {
            std::erase_if(backups, [&](const BackupFile& backup) { return backup.path == path; });
        }
        return FileError::None;
    }

    FileError CheckReplace(const std::string& path) override {
        return ErrorFor(m_replaceErrors, path);
    }

    FileError MakeFolder(const std::string& path) override {
        folders.push_back(path);
        return FileError::None;
    }

    std::shared_ptr<FileLock> Lock(const std::vector<std::string>&) override {
        return std::make_shared<FileLock>();
    }

    std::uint64_t NowTicks() override { return now; }
    void Sleep(unsigned) override {}

private:
    struct File {
        std::string bytes;
        std::uint64_t modifiedTicks = 0;
    };
    using Errors = std::map<std::string, FileError>;

    // The path of the backup, unless the newest one has the content already.
    std::string Keep(const std::string& path, const std::string& bytes) {
        std::vector<BackupFile>& backups = m_backups[Fold(path)];
        if (!backups.empty() && BytesOf(backups.front().path) == bytes) {
            return backups.front().path;
        }
        const std::string number = std::to_string(++m_lastBackup);
        BackupFile backup = {path + " backups\\" + number, "2026-11-21 06.45.0" + number,
                             bytes.size(), backups.empty()};
        Put(backup.path, bytes);
        backups.insert(backups.begin(), backup);
        return backup.path;
    }

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
    int m_lastBackup = 0;
    Errors m_readErrors;
    Errors m_replaceErrors;
};

}  // namespace tamarind
