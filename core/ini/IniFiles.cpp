#include "core/ini/IniFiles.h"

namespace tamarind {
namespace {

// 2.1 seconds: the times of change on FAT volumes are two seconds apart (Microsoft: File Times).
constexpr std::uint64_t kYouthTicks = 21'000'000;

constexpr std::uint64_t kSettledTicks = 5'000'000;  // half a second

}  // namespace

IniFiles::IniFiles(FileSystem& files)
    : m_files(files),
      m_systemCodePage(SystemAnsiCodePage()),
      m_empty(std::make_shared<const IniDocument>(IniDocument::Parse({}, m_systemCodePage))) {}

IniSnapshot IniFiles::Read(const std::string& path, CodePage codePage) {
    const auto key = std::pair(path, codePage);
    const auto found = m_entries.find(key);
    if (found != m_entries.end() && found->second.isTrusted) {
        const auto document = found->second.document.lock();
        const std::optional<FileStamp> stamp = document ? m_files.Stamp(path) : std::nullopt;
        if (stamp && *stamp == found->second.stamp) {
            return {document, FileError::None};
        }
    }
    const std::uint64_t now = m_files.NowTicks();
    FileContent content = m_files.Read(path, FileSystem::kMaxFileBytes);
    if (content.error != FileError::None) {
        m_entries.erase(key);
        return {m_empty, content.error};
    }
    auto document =
        std::make_shared<const IniDocument>(IniDocument::Parse(std::move(content.bytes), codePage));
    const bool isTrusted = content.stamp.modifiedTicks + kYouthTicks <= now;
    m_entries[key] = {document, content.stamp, isTrusted};
    // A time later than now comes from the clock of another machine and tells nothing.
    const bool isSettled =
        content.stamp.modifiedTicks > now || content.stamp.modifiedTicks + kSettledTicks <= now;
    return {std::move(document), FileError::None, isSettled};
}

ProfileTransaction::ProfileTransaction(IniFiles& files, std::string path)
    : m_files(files), m_path(std::move(path)) {}

void ProfileTransaction::SetValue(std::string_view section, std::string_view key,
                                  std::string_view value) {
    m_writes.push_back(
        {Action::SetValue, std::string(section), std::string(key), std::string(value)});
}

void ProfileTransaction::DeleteValue(std::string_view section, std::string_view key) {
    m_writes.push_back({Action::DeleteValue, std::string(section), std::string(key), {}});
}

void ProfileTransaction::DeleteSection(std::string_view section) {
    m_writes.push_back({Action::DeleteSection, std::string(section), {}, {}});
}

IniEdit ProfileTransaction::Apply(IniDocument& document, const Write& write) {
    switch (write.action) {
        case Action::SetValue:
            return document.SetValue(write.section, write.key, write.value);
        case Action::DeleteValue:
            return document.DeleteValue(write.section, write.key);
        case Action::DeleteSection:
            return document.DeleteSection(write.section);
    }
    return IniEdit::Unchanged;
}

WriteResult ProfileTransaction::Commit() {
    return EditIniFile(m_files, m_path, [this](IniDocument& document) {
        for (const Write& write : m_writes) {
            const IniEdit edit = Apply(document, write);
            if (IsRefused(edit)) {
                return edit;
            }
        }
        return IniEdit::Changed;
    });
}

}  // namespace tamarind
