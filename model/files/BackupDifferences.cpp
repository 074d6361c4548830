#include "model/files/BackupDifferences.h"

#include "core/ini/IniEntries.h"

namespace tamarind {
namespace {

// The line of a key, commented out or not, in another file; empty without one.
std::string LineOf(const IniDocument& file, std::string_view section, std::string_view name) {
    const auto value = file.FindValue(section, name);
    return value ? std::string(name) + "=" + std::string(*value) : std::string();
}

}  // namespace

std::vector<BackupDifference> CompareBackup(const IniDocument& backup, const IniDocument& now) {
    std::vector<BackupDifference> differences;
    const auto compare = [&](std::string_view section, std::string_view name) {
        BackupDifference difference;
        difference.inBackup = LineOf(backup, section, name);
        difference.now = LineOf(now, section, name);
        if (difference.inBackup != difference.now) {
            const bool isCommented = name.starts_with(';');
            difference.key =
                "[" + std::string(section) + "] " + std::string(name.substr(isCommented ? 1 : 0));
            differences.push_back(std::move(difference));
        }
    };
    ForEachEntry(now, [&](std::string_view section, IniDocument::LineId line) {
        compare(section, now.KeyName(line));
    });
    ForEachEntry(backup, [&](std::string_view section, IniDocument::LineId line) {
        if (!now.FindValue(section, backup.KeyName(line))) {
            compare(section, backup.KeyName(line));
        }
    });
    return differences;
}

}  // namespace tamarind
