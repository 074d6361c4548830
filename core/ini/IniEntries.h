#pragma once

#include "core/ini/IniDocument.h"

namespace tamarind {

// Calls `visit(section, line)` for each key of a file that counts, commented-out ones included:
// those of the first section of each name, and of these the first line of each name.
template <typename Visit>
void ForEachEntry(const IniDocument& file, Visit visit) {
    for (IniDocument::SectionId id = 0; id < file.SectionCount(); ++id) {
        const std::string_view section = file.SectionName(id);
        if (file.FindSection(section) != id) {
            continue;
        }
        for (auto line = file.FirstLine(id); line != IniDocument::kNone;
             line = file.NextLine(line)) {
            if (IsIniKey(file.Kind(line)) && !file.IsRepeated(id, line)) {
                visit(section, line);
            }
        }
    }
}

}  // namespace tamarind
