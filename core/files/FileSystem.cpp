#include "core/files/FileSystem.h"

#include "core/files/FileCalls.h"
#include "core/files/PathRules.h"
#include "core/files/SafeReplace.h"

namespace tamarind {
namespace {

// How often Replace reads the file and tries again because it has just changed.
constexpr int kMaxRounds = 5;

}  // namespace

FileError FileSystem::Replace(const std::string& path, const std::string& bytes, Backup backup) {
    const std::shared_ptr<FileLock> lock = Lock({path});
    if (!lock) {
        return FileError::InUse;
    }
    for (int round = 0; round < kMaxRounds; ++round) {
        FileContent present = Read(path, kMaxFileBytes);
        if (present.error != FileError::None && !IsMissing(present.error)) {
            return present.error;
        }
        FileState expected;
        if (present.error == FileError::None) {
            expected = std::move(present.bytes);
        }
        const FileError error = Exchange(path, bytes, expected, backup).error;
        if (error != FileError::Changed) {
            return error;
        }
    }
    return FileError::KeepsChanging;
}

DiskFileSystem::DiskFileSystem()
    : m_ownCalls(MakeFileCalls()),
      m_calls(*m_ownCalls),
      m_replace(std::make_unique<SafeReplace>(m_calls)) {}

DiskFileSystem::DiskFileSystem(FileCalls& calls)
    : m_calls(calls), m_replace(std::make_unique<SafeReplace>(m_calls)) {}

DiskFileSystem::~DiskFileSystem() = default;

std::optional<FileStamp> DiskFileSystem::Stamp(const std::string& path) {
    if (!CanBeFile(path)) {
        return std::nullopt;
    }
    const std::optional<FileStamp> stamp = m_calls.Stamp(path);
    return stamp || PutBack(path) != FileError::None ? stamp : m_calls.Stamp(path);
}

bool DiskFileSystem::Exists(const std::string& path) {
    return m_calls.Inspect(path).error == CallError::None;
}

FileContent DiskFileSystem::Read(const std::string& path, std::uint64_t maxBytes) {
    if (!CanBeFile(path)) {
        return {FileError::BadName, {}, {}};
    }
    FileBytes read = m_replace->Read(path, maxBytes);
    // Only an interrupted or unfinished replacement leaves a missing file, or a file with several
    // hard links that is not whole. All other reads are spared the look for leftovers.
    if (read.error == CallError::None && read.links > 1) {
        const auto lock = m_replace->Lock({path});
        return ReadAgain(path, maxBytes, lock ? m_replace->Recover(path) : FileError::InUse);
    }
    if (read.error == CallError::NotFound) {
        return ReadAgain(path, maxBytes, PutBack(path));
    }
    return {FileErrorOf(read.error), std::move(read.bytes), read.stamp};
}

FileContent DiskFileSystem::ReadAgain(const std::string& path, std::uint64_t maxBytes,
                                      FileError recovered) {
    if (recovered != FileError::None) {
        return {recovered, {}, {}};
    }
    FileBytes read = m_replace->Read(path, maxBytes);
    return {FileErrorOf(read.error), std::move(read.bytes), read.stamp};
}

FileError DiskFileSystem::PutBack(const std::string& path) {
    return m_replace->MayHaveLeftovers(path) ? m_replace->Recover(path) : FileError::None;
}

ReplaceResult DiskFileSystem::Exchange(const std::string& path, const std::string& bytes,
                                       const FileState& expected, Backup backup) {
    return CanBeFile(path) ? m_replace->Exchange(path, bytes, expected, backup)
                           : ReplaceResult{FileError::BadName, {}, {}};
}

std::vector<BackupFile> DiskFileSystem::ListBackups(const std::string& path) {
    return CanBeFile(path) ? m_replace->ListBackups(path) : std::vector<BackupFile>();
}

FileError DiskFileSystem::CheckReplace(const std::string& path) {
    return CanBeFile(path) ? m_replace->Check(path) : FileError::BadName;
}

FileError DiskFileSystem::MakeFolder(const std::string& path) {
    const CallError error = CanBeFile(path) ? m_calls.MakeFolder(path) : CallError::BadName;
    return error == CallError::Exists ? FileError::None : FileErrorOf(error);
}

std::shared_ptr<FileLock> DiskFileSystem::Lock(const std::vector<std::string>& paths) {
    return m_replace->Lock(paths);
}

FileError DiskFileSystem::DeleteBackup(const std::string& path) {
    return FileErrorOf(FileSteps(m_calls).Delete(path));
}

std::uint64_t DiskFileSystem::NowTicks() {
    return m_calls.NowTicks();
}

void DiskFileSystem::Sleep(unsigned milliseconds) {
    m_calls.Sleep(milliseconds);
}

}  // namespace tamarind
