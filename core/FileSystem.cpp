#include "core/FileSystem.h"

#include "core/FileCalls.h"
#include "core/SafeReplace.h"

namespace tamarind {

DiskFileSystem::DiskFileSystem()
    : m_ownCalls(MakeFileCalls()),
      m_calls(*m_ownCalls),
      m_replace(std::make_unique<SafeReplace>(m_calls)) {}

DiskFileSystem::DiskFileSystem(FileCalls& calls)
    : m_calls(calls), m_replace(std::make_unique<SafeReplace>(m_calls)) {}

DiskFileSystem::~DiskFileSystem() = default;

std::optional<FileStamp> DiskFileSystem::Stamp(const std::string& path) {
    const std::optional<FileStamp> stamp = m_calls.Stamp(path);
    return stamp || PutBack(path) != FileError::None ? stamp : m_calls.Stamp(path);
}

FileContent DiskFileSystem::Read(const std::string& path, std::uint64_t maxBytes) {
    FileBytes read = m_calls.Read(path, maxBytes);
    std::shared_ptr<FileLock> lock;
    FileError error = FileError::None;
    // Only a replacement that has been interrupted or is going on leaves no file, or a file with
    // several links that is not whole: all other reads need not look.
    if (read.error == CallError::None && read.links > 1) {
        lock = m_replace->Lock(path);
        error = lock ? m_replace->Recover(path) : FileError::InUse;
    } else if (read.error == CallError::NotFound) {
        error = PutBack(path);
    } else {
        return {FileErrorOf(read.error), std::move(read.bytes), read.stamp};
    }
    if (error != FileError::None) {
        return {error, {}, {}};
    }
    read = m_calls.Read(path, maxBytes);
    return {FileErrorOf(read.error), std::move(read.bytes), read.stamp};
}

// Of a file that was missing a moment ago.
FileError DiskFileSystem::PutBack(const std::string& path) {
    return m_replace->MayHaveLeftovers(path) ? m_replace->Recover(path) : FileError::None;
}

FileError DiskFileSystem::Replace(const std::string& path, const std::string& bytes) {
    return m_replace->Replace(path, bytes, Backup::No);
}

FileError DiskFileSystem::ReplaceWithBackup(const std::string& path, const std::string& bytes) {
    return m_replace->Replace(path, bytes, Backup::Yes);
}

std::vector<BackupFile> DiskFileSystem::ListBackups(const std::string& path) {
    return m_replace->ListBackups(path);
}

FileError DiskFileSystem::CheckReplace(const std::string& path) {
    return m_replace->Check(path);
}

FileError DiskFileSystem::MakeFolder(const std::string& path) {
    const CallError error = m_calls.MakeFolder(path);
    return error == CallError::Exists ? FileError::None : FileErrorOf(error);
}

std::shared_ptr<FileLock> DiskFileSystem::Lock(const std::string& path) {
    return m_replace->Lock(path);
}

std::uint64_t DiskFileSystem::NowTicks() {
    return m_calls.NowTicks();
}

}  // namespace tamarind
