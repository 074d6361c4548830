// How a change between Read and Edit is kept. Edit calls Exchange with what was read (`onDisk`):
//
//   nobody wrote          Exchange succeeds, done
//   somebody wrote before the comparison
//                         error Changed, the file is untouched: another round reads it anew
//   somebody wrote after the comparison
//                         Exchange moves their text aside and reports it as `foreign`: Remember
//                         keeps it, and the next round merges it with what is in the file and edits
//                         the result
//
// A merge that is refused ends the save. Then `aside` tells the user where the other text is.

#include "core/ini/IniTransaction.h"

#include <algorithm>
#include <utility>

#include "core/ini/IniEntries.h"
#include "core/ini/ShownValue.h"

namespace tamarind {
namespace {

// Gives the other program a moment to finish.
constexpr unsigned kPauseMs = 20;

}  // namespace

IniEdit MergeChanges(IniDocument& base, const IniDocument& from, const IniDocument& to) {
    IniEdit merged = IniEdit::Unchanged;
    const auto note = [&merged](IniEdit edit) {
        if (!IsRefused(merged) && edit != IniEdit::Unchanged) {
            merged = edit;
        }
    };
    ForEachEntry(to, [&](std::string_view section, IniDocument::LineId line) {
        const std::string_view value = to.Value(line);
        if (from.FindValue(section, to.KeyName(line)) != value) {
            note(WriteExactValue(base, section, to.KeyName(line), value));
        }
    });
    ForEachEntry(from, [&](std::string_view section, IniDocument::LineId line) {
        if (!to.FindValue(section, from.KeyName(line))) {
            note(base.DeleteKey(section, from.KeyName(line)));
        }
    });
    return merged;
}

// The lock of the last round is released first, or this process would never let others in.
FileError IniTransaction::Begin(const std::vector<std::string>& paths) {
    m_entries.clear();
    m_locked.clear();
    m_lock.reset();
    if (m_changes >= kMaxRounds) {
        return FileError::KeepsChanging;
    }
    if (m_changes > 0) {
        m_files.Files().Sleep(kPauseMs);
    }
    m_lock = m_files.Files().Lock(paths);
    if (!m_lock) {
        return FileError::InUse;
    }
    m_locked = paths;
    return FileError::None;
}

bool IniTransaction::Holds(const std::vector<std::string>& paths) const {
    return std::ranges::all_of(paths, [this](const std::string& path) {
        return std::ranges::find(m_locked, path) != m_locked.end();
    });
}

void IniTransaction::Pause() {
    m_entries.clear();
    m_locked.clear();
    m_lock.reset();
    m_changes = 0;
}

IniSnapshot IniTransaction::Read(const std::string& path) {
    const Entry& entry = EntryOf(path);
    return {entry.document, entry.error};
}

void IniTransaction::MakeFrom(const std::string& path, std::string bytes) {
    m_madeFrom[path] = std::move(bytes);
    m_entries.erase(path);
}

IniTransaction::Entry& IniTransaction::EntryOf(const std::string& path) {
    const auto known = m_entries.find(path);
    if (known != m_entries.end()) {
        return known->second;
    }
    FileContent content = m_files.Files().Read(path, FileSystem::kMaxFileBytes);
    const auto unmerged = m_unmerged.find(path);
    const bool isOwed = unmerged != m_unmerged.end();
    // The text of the other program is no longer in the file, so giving up now would lose it from
    // there: the file is waited for.
    while (content.error == FileError::InUse && isOwed && ++m_changes < kMaxRounds) {
        content = m_files.Files().Read(path, FileSystem::kMaxFileBytes);
    }
    Entry entry;
    entry.error = content.error;
    if (content.error == FileError::None) {
        entry.onDisk = std::move(content.bytes);
    }
    const auto madeFrom = m_madeFrom.find(path);
    const bool isMissing = IsMissing(content.error);
    const CodePage codePage = m_files.SystemCodePage();
    if (isOwed && (entry.onDisk || isMissing)) {
        entry.error = FileError::None;
        IniDocument base = IniDocument::Parse(unmerged->second.base, codePage);
        const IniEdit merged = Merge(base, unmerged->second.written, entry.onDisk);
        entry.refused = IsRefused(unmerged->second.refused) ? unmerged->second.refused : merged;
        entry.document = std::make_shared<const IniDocument>(std::move(base));
    } else {
        const bool isMade = isMissing && madeFrom != m_madeFrom.end();
        entry.error = isMade ? FileError::None : entry.error;
        entry.document = std::make_shared<const IniDocument>(IniDocument::Parse(
            isMade ? madeFrom->second : entry.onDisk.value_or(std::string()), codePage));
    }
    return m_entries[path] = std::move(entry);
}

// Applies the changes between two states of the file to `base`.
IniEdit IniTransaction::Merge(IniDocument& base, const FileState& from, const FileState& to) const {
    const auto parsed = [this](const FileState& state) {
        return IniDocument::Parse(state.value_or(std::string()), m_files.SystemCodePage());
    };
    return from == to ? IniEdit::Unchanged : MergeChanges(base, parsed(from), parsed(to));
}

IniTransaction::Written IniTransaction::Edit(const std::string& path,
                                             const std::function<IniEdit(IniDocument&)>& edit) {
    Entry& entry = EntryOf(path);
    Written written;
    written.result.aside = AsideOf(path);
    if (entry.error != FileError::None && !IsMissing(entry.error)) {
        written.result.error = entry.error;
        return written;
    }
    IniDocument document = *entry.document;
    const IniEdit edited = IsRefused(entry.refused) ? entry.refused : edit(document);
    if (IsRefused(edited)) {
        written.result.refused = edited;
        return written;
    }
    std::string bytes = document.Bytes();
    if (bytes != entry.onDisk.value_or(std::string())) {
        const bool isFirst = !std::exchange(m_isBackedUp[path], true);
        ReplaceResult replaced =
            m_files.Files().Exchange(path, bytes, entry.onDisk, isFirst ? m_backup : Backup::No);
        written.result.error = replaced.error;
        // As in EntryOf: a text of another program still has to get into the file.
        const bool mayPass = replaced.error == FileError::InUse && m_unmerged.contains(path);
        written.isAgain = replaced.foreign || replaced.error == FileError::Changed || mayPass;
        // Nothing was replaced, so no backup was made; the next round makes it.
        if (replaced.error != FileError::None && !replaced.foreign) {
            m_isBackedUp[path] = !isFirst;
        }
        if (replaced.error == FileError::None && isFirst && m_backup == Backup::Yes &&
            entry.onDisk) {
            m_haveBackups.insert(path);
        }
        if (replaced.foreign) {
            const bool isReplaced = replaced.error == FileError::None;
            Remember(path, entry, isReplaced ? FileState(bytes) : FileState(), std::move(replaced));
        }
    }
    if (written.isAgain) {
        ++m_changes;
        return written;
    }
    if (written.result.Succeeded()) {
        written.result.aside.clear();
        written.hasBackup = m_haveBackups.contains(path);
        DeleteFormer(path);
        entry.error = FileError::None;
        // As it would be read: an edited document tells its edits since it was parsed.
        entry.document = std::make_shared<const IniDocument>(
            IniDocument::Parse(bytes, m_files.SystemCodePage()));
        entry.onDisk = std::move(bytes);
    }
    return written;
}

// To be called when the file holds everything that these backups hold.
void IniTransaction::DeleteFormer(const std::string& path) {
    const auto unmerged = m_unmerged.find(path);
    if (unmerged != m_unmerged.end()) {
        for (const std::string& backup : unmerged->second.former) {
            m_files.Files().DeleteBackup(backup);
        }
        m_unmerged.erase(unmerged);
    }
}

// If another program comes in between several times, only its last text stays among the backups.
// The earlier ones are part of what was written this time; if nothing was written, they are kept.
void IniTransaction::Remember(const std::string& path, const Entry& entry, const FileState& written,
                              ReplaceResult&& replaced) {
    // If their text is just the file as it was read, it is a backup like any other, not one to
    // report.
    const bool isTheirs = replaced.foreign != entry.onDisk;
    Unmerged next;
    next.base = *replaced.foreign;
    next.written = written;
    next.aside = isTheirs ? replaced.aside : std::string();
    const auto former = m_unmerged.find(path);
    if (former != m_unmerged.end()) {
        IniDocument base = *entry.document;
        next.refused = Merge(base, entry.onDisk, replaced.foreign);
        next.base = base.Bytes();
        if (!former->second.aside.empty()) {
            former->second.former.push_back(former->second.aside);
        }
        if (!written) {
            next.former = std::move(former->second.former);
        }
        DeleteFormer(path);
    }
    m_unmerged[path] = std::move(next);
}

std::string IniTransaction::AsideOf(const std::string& path) const {
    const auto unmerged = m_unmerged.find(path);
    if (unmerged == m_unmerged.end()) {
        return {};
    }
    std::string backups = unmerged->second.aside;
    for (const std::string& former : unmerged->second.former) {
        backups += (backups.empty() ? "" : ", ") + former;
    }
    return backups;
}

WriteResult EditIniFile(IniFiles& files, const std::string& path,
                        const std::function<IniEdit(IniDocument&)>& edit, Backup backup) {
    IniTransaction transaction(files, backup);
    for (;;) {
        const FileError error = transaction.Begin({path});
        if (error != FileError::None) {
            return {error, IniEdit::Unchanged, transaction.AsideOf(path)};
        }
        const IniTransaction::Written written = transaction.Edit(path, edit);
        if (!written.isAgain) {
            return written.result;
        }
    }
}

}  // namespace tamarind
