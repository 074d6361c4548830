#include "core/Backups.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

#include "core/Unicode.h"

namespace tamarind {
namespace {

constexpr std::size_t kBackupsKept = 10;  // besides the first
constexpr std::string_view kFirstMark = "first, ";
constexpr std::string_view kDatePattern = "dddd-dd-dd dd.dd.dd";
constexpr std::uint64_t kTicksPerDay = 864'000'000'000U;

std::string DateText(const CivilTime& time) {
    char text[80];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d.%02d.%02d", time.year, time.month,
                  time.day, time.hour, time.minute, time.second);
    return text;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsDate(std::string_view text) {
    return std::equal(text.begin(), text.end(), kDatePattern.begin(), kDatePattern.end(),
                      [](char c, char form) { return form == 'd' ? IsDigit(c) : c == form; });
}

// Takes `start` away from the text if it begins with it, in whatever letter case.
bool Skip(std::string_view& text, std::string_view start) {
    const bool isThere = EqualsIgnoreCase(text.substr(0, start.size()), start);
    text.remove_prefix(isThere ? start.size() : 0);
    return isThere;
}

// The date of a backup's name and, behind it, the number among those of one second.
struct ParsedName {
    std::string date;
    std::string number;
    bool isFirst = false;
};

std::optional<ParsedName> Parse(std::string_view name, std::string_view stem,
                                std::string_view extension) {
    ParsedName parsed;
    if (!Skip(name, stem) || !Skip(name, " (")) {
        return std::nullopt;
    }
    parsed.isFirst = Skip(name, kFirstMark);
    parsed.date = std::string(name.substr(0, kDatePattern.size()));
    if (!IsDate(parsed.date) || !Skip(name, parsed.date) || !Skip(name, ")")) {
        return std::nullopt;
    }
    if (Skip(name, " ")) {
        const auto end = std::find_if_not(name.begin(), name.end(), IsDigit);
        parsed.number = std::string(name.begin(), end);
        name.remove_prefix(parsed.number.size());
    }
    return EqualsIgnoreCase(name, extension) ? std::optional(parsed) : std::nullopt;
}

}  // namespace

Backups::Backups(FileSteps& steps, const std::string& path) : m_steps(steps) {
    const std::string besides = FolderWithSeparator(path);
    const std::string name = path.substr(besides.size());
    const std::size_t dot = name.find_last_of('.');
    m_folder = path + " backups" + (besides.empty() ? '\\' : besides.back());
    m_stem = name.substr(0, dot);
    m_extension = dot == std::string::npos ? std::string() : name.substr(dot);
}

CallError Backups::ListFiles(std::vector<FolderEntry>& files) {
    return m_steps.Retry([&] { return m_steps.Calls().List(m_folder + m_stem, files); });
}

std::vector<BackupFile> Backups::List() {
    std::vector<FolderEntry> files;
    return ListFiles(files) == CallError::None ? Sort(files) : std::vector<BackupFile>();
}

std::vector<BackupFile> Backups::Sort(const std::vector<FolderEntry>& files) {
    FileCalls& calls = m_steps.Calls();
    struct Sorted {
        bool isBelieved;
        ParsedName name;
        BackupFile file;
    };
    std::vector<Sorted> found;
    const std::string tomorrow = DateText(calls.LocalTime(calls.NowTicks() + kTicksPerDay));
    for (const FolderEntry& file : files) {
        if (const auto name = Parse(file.name, m_stem, m_extension)) {
            found.push_back({name->date <= tomorrow,
                             *name,
                             {m_folder + file.name, name->date, file.size, name->isFirst}});
        }
    }
    std::sort(found.begin(), found.end(), [](const Sorted& left, const Sorted& right) {
        const auto order = [](const Sorted& entry) {
            return std::tuple(entry.isBelieved, std::string_view(entry.name.date),
                              !entry.name.isFirst, entry.name.number.size(),
                              std::string_view(entry.name.number));
        };
        return order(right) < order(left);
    });
    std::vector<BackupFile> backups;
    for (Sorted& entry : found) {
        backups.push_back(std::move(entry.file));
    }
    return backups;
}

bool Backups::IsNewest(const std::vector<BackupFile>& backups, const std::string& bytes) {
    if (backups.empty() || backups.front().size != bytes.size()) {
        return false;
    }
    const FileBytes newest = m_steps.Read(backups.front().path);
    return newest.error == CallError::None && newest.bytes == bytes;
}

CallError Backups::Keep(const std::string& bytes) {
    FileCalls& calls = m_steps.Calls();
    std::vector<FolderEntry> files;
    CallError error = ListFiles(files);
    if (error == CallError::FolderMissing) {
        error = calls.MakeFolder(m_folder);
    }
    if (error != CallError::None) {
        return error;
    }
    m_steps.RemoveTemporaries(m_folder, files);
    const std::vector<BackupFile> earlier = Sort(files);
    if (IsNewest(earlier, bytes)) {
        return CallError::None;
    }
    const std::string mark(earlier.empty() ? kFirstMark : std::string_view());
    const std::string date = DateText(calls.LocalTime(calls.NowTicks()));
    error = Write(m_folder + m_stem + " (" + mark + date + ")", bytes);
    if (error == CallError::None) {
        Trim(earlier);
    }
    return error;
}

CallError Backups::Write(const std::string& name, const std::string& bytes) {
    std::string temporary;
    CallError error = m_steps.WriteTemporary(name + m_extension, bytes, temporary);
    if (error != CallError::None) {
        return error;
    }
    error = m_steps.Move(temporary, name + m_extension, MoveMode::KeepExisting);
    for (int number = 2; error == CallError::Exists && number < 100; ++number) {
        const std::string numbered = name + " " + std::to_string(number) + m_extension;
        error = m_steps.Move(temporary, numbered, MoveMode::KeepExisting);
    }
    if (error != CallError::None) {
        m_steps.Delete(temporary);
    }
    return error;
}

void Backups::Trim(const std::vector<BackupFile>& earlier) {
    std::size_t kept = 1;  // the new one, whatever the clock has said before
    for (const BackupFile& backup : earlier) {
        if (!backup.isFirst && ++kept > kBackupsKept) {
            m_steps.Delete(backup.path);
        }
    }
}

}  // namespace tamarind
