#pragma once

#include <utility>

#include "core/files/SafeReplace.h"
#include "tests/core/fakes/FaultyDisk.h"

namespace tamarind {

// Files in memory, for tests above the calls of the system: counts what is asked of it, and its
// clock and errors are set from outside. Every path can be written unless an error is set for it.
class MemoryFileSystem final : public FileSystem {
    FaultyDisk m_disk;  // before `now`, which is a part of it

public:
    MemoryFileSystem() {
        now = 1'000'000'000'000;
        m_disk.hasAllFolders = true;
    }

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
    std::uint64_t& now = m_disk.now;
    void Wait(double seconds) { now += static_cast<std::uint64_t>(seconds * 10'000'000.0); }

    // Writes a file as another program would, with the present time as its stamp. A file that
    // has been there for longer: Put, then Wait.
    void Put(const std::string& path, const std::string& bytes) { m_disk.Put(path, bytes); }
    void Remove(const std::string& path) { m_disk.Remove(path); }
    bool Has(const std::string& path) const { return m_disk.Has(path); }
    // The content of a file, empty for a missing one.
    std::string BytesOf(const std::string& path) const {
        return Has(path) ? m_disk.BytesOf(path) : "";
    }

    // From now on reading or replacing the path fails so; FileError::None ends that.
    void FailReads(const std::string& path, FileError error) { m_readErrors[path] = error; }
    void FailReplaces(const std::string& path, FileError error) { m_replaceErrors[path] = error; }

    bool Exists(const std::string& path) override {
        return m_disk.Inspect(path).error == CallError::None;
    }
    std::optional<FileStamp> Stamp(const std::string& path) override {
        ++stamps;
        const FileError error = m_readErrors[path];
        const bool isGone = error == FileError::NotFound || error == FileError::Unreachable;
        return isGone ? std::nullopt : m_disk.Stamp(path);
    }
    FileContent Read(const std::string& path, std::uint64_t maxBytes) override {
        ++reads;
        if (beforeRead) {
            beforeRead(path);
        }
        if (const FileError error = m_readErrors[path]; error != FileError::None) {
            return {error, {}, {}};
        }
        const FileBytes read = m_replace.Read(path, maxBytes);
        return {FileErrorOf(read.error), read.bytes, read.stamp};
    }
    ReplaceResult Exchange(const std::string& path, const std::string& bytes,
                           const FileState& expected, Backup backup) override {
        ++replaces;
        if (beforeExchange) {
            beforeExchange(path);
        }
        if (const FileError error = m_replaceErrors[path]; error != FileError::None) {
            return {error, {}, {}};
        }
        if (whileAside && Has(path) && BytesOf(path) == expected) {
            const FileState aside = std::exchange(whileAside, nullptr)(path);
            m_disk.whileAside = [this, aside](const std::string& old) { Put(old, *aside); };
        }
        return m_replace.Exchange(path, bytes, expected, backup);
    }
    std::vector<BackupFile> ListBackups(const std::string& path) override {
        return m_replace.ListBackups(path);
    }
    FileError DeleteBackup(const std::string& path) override {
        return FileErrorOf(m_disk.Delete(path));
    }
    FileError CheckReplace(const std::string& path) override { return m_replaceErrors[path]; }
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
    SafeReplace m_replace{m_disk};
    std::map<std::string, FileError, LessIgnoreCase> m_readErrors;
    std::map<std::string, FileError, LessIgnoreCase> m_replaceErrors;
};

}  // namespace tamarind
