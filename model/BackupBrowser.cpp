#include "model/BackupBrowser.h"

#include "core/cProfile.h"

namespace tamarind {
namespace {

// The line of a key, commented out or not, in another file; empty without one.
std::string LineOf(const IniDocument& file, std::string_view section, std::string_view name) {
    const auto value = file.FindValue(section, name);
    return value ? std::string(name) + "=" + std::string(*value) : std::string();
}

bool IsKey(IniLineKind kind) {
    return kind == IniLineKind::Key || kind == IniLineKind::CommentedKey;
}

// Visits each key of a file once, by its section and entry name.
template <typename Visit>
void ForEachEntry(const IniDocument& file, Visit visit) {
    for (IniDocument::SectionId id = 0; id < file.SectionCount(); ++id) {
        const std::string_view section = file.SectionName(id);
        if (file.FindSection(section) != id) {
            continue;
        }
        for (auto line = file.FirstLine(id); line != IniDocument::kNone;
             line = file.NextLine(line)) {
            if (IsKey(file.Kind(line)) && !file.IsRepeated(line)) {
                visit(section, file.KeyName(line));
            }
        }
    }
}

}  // namespace

std::vector<BackupDifference> CompareBackup(const IniDocument& backup, const IniDocument& now) {
    std::vector<BackupDifference> differences;
    const auto compare = [&](std::string_view section, std::string_view name) {
        BackupDifference difference;
        difference.inBackup = LineOf(backup, section, name);
        difference.now = LineOf(now, section, name);
        if (difference.inBackup != difference.now) {
            const bool isCommented = name.substr(0, 1) == ";";
            difference.key =
                "[" + std::string(section) + "] " + std::string(name.substr(isCommented ? 1 : 0));
            differences.push_back(std::move(difference));
        }
    };
    ForEachEntry(now, compare);
    ForEachEntry(backup, [&](std::string_view section, std::string_view name) {
        if (!now.FindValue(section, name)) {
            compare(section, name);
        }
    });
    return differences;
}

}  // namespace tamarind
