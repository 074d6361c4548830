// States in which a replacement may be interrupted, and what Finish makes of them. "ok" means that
// the bytes of a leftover agree with its name.
//
//   file     beside it               interrupted                  result
//   missing  old ok, new ok or none  between the two renames      old gets the name of the file
//   missing  new ok                  there, and old was lost      new gets the name of the file
//   old      new, ok or not          before the renames           new is deleted or made a backup
//   new      old ok                  after the renames            old is deleted or made a backup
//   torn     whole ok                while it was overwritten     the old content is written back
//
// The old content is preferred to the new one because nobody has been told yet that the new one was
// saved.

#include "core/files/Leftovers.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "core/files/Backups.h"
#include "core/files/FileSteps.h"
#include "core/text/Digits.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kStart = ".~";
using Mark = std::pair<LeftoverKind, std::string_view>;
constexpr Mark kMarks[] = {{LeftoverKind::New, ".~new-"},
                           {LeftoverKind::Old, ".~old-"},
                           {LeftoverKind::Whole, ".~whole-"}};
// Digits of a 64-bit hash in hexadecimal.
constexpr std::size_t kHashDigits = 16;

// Overwriting a file in place takes no longer than this, counted from the copy beside it.
constexpr std::uint64_t kOverwritingTicks = 20'000'000;  // 2 s

// The facts in the name of a leftover.
struct LeftoverName {
    LeftoverKind kind = LeftoverKind::New;
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
};

// Nothing if `path` is not that of a leftover. Folders in front of the name do no harm.
std::optional<LeftoverName> ParseName(std::string_view path) {
    const std::size_t start = path.rfind(kStart);
    const std::string_view text = start == std::string_view::npos ? "" : path.substr(start);
    for (const auto& [kind, mark] : kMarks) {
        if (!text.starts_with(mark)) {
            continue;
        }
        LeftoverName name = {kind, 0, 0};
        const char* const end = text.data() + text.size();
        const auto size = std::from_chars(text.data() + mark.size(), end, name.size);
        if (size.ec != std::errc() || size.ptr == end || *size.ptr != '-') {
            return std::nullopt;
        }
        const auto hash = std::from_chars(size.ptr + 1, end, name.hash, 16);
        const bool isWhole = hash.ptr == size.ptr + 1 + kHashDigits;
        const bool isEnd = hash.ptr == end || *hash.ptr == '-';
        return isWhole && isEnd ? std::optional(name) : std::nullopt;
    }
    return std::nullopt;
}

// Whether another program has the file open right now.
bool IsHeld(CallError error) {
    return error == CallError::Shared || error == CallError::Locked;
}

// Whether `present` is what overwriting `old` with `planned`, byte by byte from the start, leaves
// when it stops in the middle: a beginning of `planned`, then the rest of `old` from there on.
bool IsBetween(std::string_view present, std::string_view old, std::string_view planned) {
    const auto differ = std::ranges::mismatch(present, planned);
    const auto written = static_cast<std::size_t>(differ.in1 - present.begin());
    return present.substr(written) == old.substr(std::min(written, old.size()));
}

}  // namespace

std::string LeftoverPath(const std::string& path, LeftoverKind kind, std::string_view bytes,
                         int number) {
    const auto mark = std::ranges::find(kMarks, kind, &Mark::first);
    return path + std::string(mark->second) + std::to_string(bytes.size()) + "-" +
           PaddedDigits(HashBytes(bytes), 16, 16) +
           (number > 1 ? "-" + std::to_string(number) : std::string());
}

CallError Leftovers::Find(std::vector<std::string>& paths) {
    const std::string beside = FolderWithSeparator(m_path);
    // Beside the file, and in the folder of its backups, where a file that is to become one is
    // moved.
    const std::pair<std::string, std::string> places[] = {
        {beside, m_path + std::string(kStart)}, {m_backups.Folder(), m_backups.NameStart()}};
    for (const auto& [folder, start] : places) {
        std::vector<FolderEntry> files;
        const CallError error =
            m_steps.Retry([&, &start = start] { return m_steps.Calls().List(start, files); });
        if (error != CallError::None && !IsMissing(error)) {
            return error;
        }
        for (const FolderEntry& file : files) {
            if (ParseName(file.name)) {
                paths.push_back(folder + file.name);
            }
        }
    }
    return CallError::None;
}

bool Leftovers::MayExist() {
    std::vector<std::string> paths;
    const CallError error = Find(paths);
    // If the server does not answer, nothing could be put back anyway, and each question to it
    // takes seconds.
    return !paths.empty() || (error != CallError::None && error != CallError::Unreachable);
}

CallError Leftovers::Finish(bool isMissing) {
    List list;
    CallError error = Read(isMissing, list);
    if (error != CallError::None || list.empty()) {
        return error;
    }
    FileBytes present;
    error = isMissing ? PutBack(list, present) : Mend(list, present);
    if (error == CallError::None) {
        ClearAway(list, present.bytes);
    }
    return error;
}

CallError Leftovers::Read(bool isMissing, List& list) {
    std::vector<std::string> paths;
    const CallError error = Find(paths);
    for (const std::string& path : paths) {
        const LeftoverName name = *ParseName(path);
        Leftover leftover = {path, name.kind, false, false, m_steps.Read(path)};
        const CallError read = leftover.content.error;
        if (read == CallError::None) {
            const std::string& bytes = leftover.content.bytes;
            leftover.agrees = bytes.size() == name.size && HashBytes(bytes) == name.hash;
            leftover.isPlanned =
                name.kind == LeftoverKind::New && path.compare(0, path.rfind(kStart), m_path) == 0;
            list.push_back(std::move(leftover));
            // While the file is missing, a leftover that cannot be read may be the file itself, so
            // nothing may be decided. One of kind New that is held is not: another program is just
            // writing it.
        } else if (isMissing && !IsMissing(read) &&
                   !(name.kind == LeftoverKind::New && IsHeld(read))) {
            return read;
        }
    }
    return error;
}

CallError Leftovers::PutBack(List& list, FileBytes& present) {
    // In this order: the old content rather than the new one, which nobody has been told of yet.
    for (const LeftoverKind kind : {LeftoverKind::Old, LeftoverKind::Whole, LeftoverKind::New}) {
        const auto found = std::ranges::find_if(list, [&](const Leftover& leftover) {
            return leftover.kind == kind && leftover.agrees &&
                   (leftover.isPlanned || kind != LeftoverKind::New);
        });
        if (found == list.end()) {
            continue;
        }
        const CallError error = m_steps.Move(found->path, m_path, MoveMode::KeepExisting);
        if (error == CallError::None) {
            present = std::move(found->content);
            list.erase(found);
        } else if (error == CallError::Exists) {
            // Somebody has made a new file; it stays.
            present = m_steps.Read(m_path);
            return present.error;
        }
        return error;
    }
    return CallError::None;
}

// Ends the overwriting of a file with several hard links by giving it its old content again.
CallError Leftovers::Mend(const List& list, FileBytes& present) {
    present = m_steps.Read(m_path);
    const auto whole = std::ranges::find_if(list, [&](const Leftover& leftover) {
        return leftover.kind == LeftoverKind::Whole && leftover.agrees;
    });
    if (present.error != CallError::None || whole == list.end() || !IsTorn(list, *whole, present)) {
        return present.error;
    }
    // Another program may have written the file since then, so its present content is kept as a
    // backup.
    CallError error = m_backups.Keep(present.bytes);
    if (error == CallError::None) {
        bool isWhole = true;
        error = m_steps.WriteInPlace(m_path, whole->content.bytes, present.bytes, isWhole);
    }
    present.bytes = whole->content.bytes;
    return error;
}

// A file that another program has written since is not torn. If the planned content is there as
// well, the test is exact for a program that was killed: it leaves something between the two. A
// machine that lost power may leave anything, but with a time of change that is not later than the
// overwriting would have ended.
bool Leftovers::IsTorn(const List& list, const Leftover& whole, const FileBytes& present) const {
    const std::string& old = whole.content.bytes;
    for (const Leftover& planned : list) {
        if (planned.isPlanned && planned.agrees) {
            const std::string& bytes = planned.content.bytes;
            if (present.bytes == bytes || present.bytes == old) {
                return false;
            }
            if (IsBetween(present.bytes, old, bytes)) {
                return true;
            }
        }
    }
    const std::uint64_t begun = whole.content.stamp.modifiedTicks;
    const std::uint64_t changed = present.stamp.modifiedTicks;
    return present.bytes != old && changed >= begun && changed - begun <= kOverwritingTicks;
}

void Leftovers::ClearAway(const List& list, const std::string& present) {
    for (const Leftover& leftover : list) {
        const std::string& bytes = leftover.content.bytes;
        // A new content that does not agree with its name was never finished, so nobody needs it.
        const bool isUnfinished = leftover.kind == LeftoverKind::New && !leftover.agrees;
        std::string kept;
        if (isUnfinished || bytes == present || m_backups.Has(bytes)) {
            m_steps.Delete(leftover.path);
        } else {
            // If this fails, the next replacement tries again.
            m_backups.Adopt(leftover.path, kept);
        }
    }
}

}  // namespace tamarind
