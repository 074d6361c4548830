#include "core/files/Backups.h"

#include <algorithm>
#include <charconv>
#include <tuple>

#include "core/files/Leftovers.h"
#include "core/text/Digits.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::size_t kBackupsKept = 10;  // besides the first
constexpr int kLargestNumber = 9999;      // in names; a larger one was not made by this program
constexpr std::string_view kFirstMark = "first, ";
constexpr std::string_view kDatePattern = "dddd-dd-dd dd.dd.dd";
constexpr std::uint64_t kTicksPerDay = 864'000'000'000U;

std::string DateText(const CivilTime& time) {
    const auto two = [](int number) { return PaddedDigits(static_cast<std::uint64_t>(number), 2); };
    return PaddedDigits(static_cast<std::uint64_t>(time.year), 4) + "-" + two(time.month) + "-" +
           two(time.day) + " " + two(time.hour) + "." + two(time.minute) + "." + two(time.second);
}

// Not std::isdigit, which depends on the locale.
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Whether the text has the form of DateText; "9999-99-99 99.99.99" passes as well.
bool IsDate(std::string_view text) {
    return std::ranges::equal(
        text, kDatePattern, [](char c, char form) { return form == 'd' ? IsDigit(c) : c == form; });
}

// If the text begins with `start`, in whatever letter case, removes it from the text and returns
// true.
bool Skip(std::string_view& text, std::string_view start) {
    const bool isThere = EqualsIgnoreCase(text.substr(0, start.size()), start);
    text.remove_prefix(isThere ? start.size() : 0);
    return isThere;
}

// What the name of a backup says: STEM " (" ["first, "] DATE ")" [" " NUMBER] EXTENSION.
struct ParsedName {
    std::string date;
    int number = 1;
    bool isFirst = false;
};

// Nothing if the name is not that of a backup. `extension` includes the dot.
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
        const auto [end, error] =
            std::from_chars(name.data(), name.data() + name.size(), parsed.number);
        if (error != std::errc() || parsed.number < 1 || parsed.number > kLargestNumber) {
            return std::nullopt;
        }
        name.remove_prefix(static_cast<std::size_t>(end - name.data()));
    }
    return EqualsIgnoreCase(name, extension) ? std::optional(parsed) : std::nullopt;
}

}  // namespace

Backups::Backups(FileSteps& steps, const std::string& path) : m_steps(steps), m_path(path) {
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
    std::vector<BackupFile> backups;
    if (ListFiles(files) == CallError::None) {
        for (Entry& entry : Sort(files)) {
            backups.push_back(std::move(entry.file));
        }
    }
    return backups;
}

std::vector<Backups::Entry> Backups::Sort(const std::vector<FolderEntry>& files) {
    FileCalls& calls = m_steps.Calls();
    // Tomorrow, not now: local time jumps back an hour in autumn, and clocks of other machines
    // differ.
    const std::string tomorrow = DateText(calls.LocalTime(calls.NowTicks() + kTicksPerDay));
    std::vector<Entry> entries;
    entries.reserve(files.size());
    for (const FolderEntry& file : files) {
        if (const auto name = Parse(file.name, m_stem, m_extension)) {
            entries.push_back({{m_folder + file.name, name->date, file.stamp.size, name->isFirst},
                               file.stamp,
                               name->number,
                               name->date <= tomorrow});
        }
    }
    std::ranges::sort(entries, [](const Entry& left, const Entry& right) {
        const auto order = [](const Entry& entry) {
            return std::tuple(entry.isBelieved, std::string_view(entry.file.date),
                              !entry.file.isFirst, entry.number);
        };
        return order(right) < order(left);
    });
    return entries;
}

bool Backups::IsNewest(const std::string& bytes) {
    if (m_earlier.empty() || m_earlier.front().file.size != bytes.size()) {
        return false;
    }
    const FileBytes newest = m_steps.Read(m_earlier.front().file.path);
    return newest.error == CallError::None && newest.bytes == bytes;
}

bool Backups::Has(const std::string& bytes) {
    std::vector<FolderEntry> files;
    if (ListFiles(files) != CallError::None) {
        return false;
    }
    const std::vector<Entry> entries = Sort(files);
    return std::ranges::any_of(entries, [&](const Entry& entry) {
        return entry.file.size == bytes.size() && m_steps.Read(entry.file.path).bytes == bytes;
    });
}

CallError Backups::Load() {
    if (m_isLoaded) {
        return CallError::None;
    }
    std::vector<FolderEntry> files;
    CallError error = ListFiles(files);
    if (error == CallError::FolderMissing) {
        error = m_steps.Calls().MakeFolder(m_folder);
    }
    m_earlier = Sort(files);
    m_isLoaded = error == CallError::None;
    return error;
}

std::string Backups::NewName() {
    FileCalls& calls = m_steps.Calls();
    const std::string date = DateText(calls.LocalTime(calls.NowTicks()));
    int number = 1;
    for (const Entry& entry : m_earlier) {
        if (entry.file.date == date && !entry.file.isFirst) {
            number = std::max(number, entry.number + 1);
        }
    }
    return m_folder + m_stem + " (" +
           std::string(m_earlier.empty() ? kFirstMark : std::string_view()) + date + ")" +
           (number > 1 ? " " + std::to_string(number) : std::string()) + m_extension;
}

CallError Backups::Keep(const std::string& bytes) {
    CallError error = Load();
    if (error != CallError::None || IsNewest(bytes)) {
        return error;
    }
    error = m_steps.WriteAndMove(NewName(), bytes, MoveMode::KeepExisting);
    if (error == CallError::None) {
        Trim();
    }
    return error;
}

CallError Backups::Prepare(const std::string& bytes, bool& isNeeded) {
    const CallError error = Load();
    // Only a backup that somebody has copied back is likely to be the same, and such a copy keeps
    // the backup's size and time. Without this test each save would read the newest backup.
    isNeeded = error != CallError::None || m_earlier.empty() ||
               m_steps.Calls().Stamp(m_path) != m_earlier.front().stamp || !IsNewest(bytes);
    return error;
}

std::string Backups::OldPath(const std::string& bytes) const {
    return LeftoverPath(m_folder + m_stem + m_extension, LeftoverKind::Old, bytes);
}

CallError Backups::Adopt(const std::string& path, std::string& name) {
    CallError error = Load();
    if (error == CallError::None) {
        name = NewName();
        error = m_steps.Move(path, name, MoveMode::KeepExisting);
    }
    if (error == CallError::None) {
        Trim();
    }
    return error;
}

void Backups::Trim() {
    m_isLoaded = false;
    // The new one, which is not in `m_earlier`; it counts as the newest whatever its date says.
    std::size_t kept = 1;
    for (const Entry& backup : m_earlier) {
        if (!backup.file.isFirst && ++kept > kBackupsKept) {
            m_steps.Delete(backup.file.path);
        }
    }
}

}  // namespace tamarind
