// What holds for every INI file and every edit of it.
#pragma once

#include <algorithm>
#include <vector>

#include "core/ini/IniDocument.h"
#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"
#include "tests/fuzz/Require.h"

namespace tamarind {

using LineId = IniDocument::LineId;
using SectionId = IniDocument::SectionId;

inline std::vector<LineId> LinesOf(const IniDocument& document, SectionId section) {
    std::vector<LineId> lines;
    for (LineId line = document.FirstLine(section); line != IniDocument::kNone;
         line = document.NextLine(line)) {
        lines.push_back(line);
    }
    return lines;
}

// The first keys and sections of every name, found without the tables; of long sections the lines
// at their start.
inline void CheckLookUps(const IniDocument& document, std::size_t mostLines = 24) {
    for (SectionId id = 0; id < std::min<std::size_t>(document.SectionCount(), 16); ++id) {
        SectionId firstSection = 0;
        while (!EqualsIgnoreCase(document.SectionName(firstSection), document.SectionName(id))) {
            ++firstSection;
        }
        // A name in the file may have a blank at its end that arguments lose.
        if (TrimIniSpaces(document.SectionName(id)) == document.SectionName(id)) {
            Require(document.FindSection(document.SectionName(id)) == firstSection);
        }
        std::vector<LineId> lines = LinesOf(document, id);
        lines.resize(std::min(lines.size(), mostLines));
        for (const LineId line : lines) {
            if (!IsIniKey(document.Kind(line))) {
                continue;
            }
            const auto first = std::find_if(lines.begin(), lines.end(), [&](LineId other) {
                return IsIniKey(document.Kind(other)) &&
                       EqualsIgnoreCase(document.KeyName(other), document.KeyName(line));
            });
            Require(document.IsRepeated(id, line) == (*first != line));
            Require(*first == line || !document.AllNamesDiffer(id));
            Require(document.FindKey(id, document.KeyName(line)) == *first);
            Require(IsValidUtf8(document.KeyName(line)) && IsValidUtf8(document.Value(line)));
        }
    }
}

// What an edit took away from the bytes is part of one line, behind its equals sign, or nothing
// where it added a key.
inline void CheckOtherLines(const std::string& before, const std::string& after, std::size_t sign) {
    const auto end = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
    const auto shared = end - before.begin();
    const auto start = std::mismatch(before.rbegin(), before.rend() - shared, after.rbegin(),
                                     after.rend() - shared)
                           .first;
    const auto first = static_cast<std::size_t>(shared);
    const auto last = static_cast<std::size_t>(start.base() - before.begin());
    Require(sign != std::string::npos ? first > sign : first == last);
    const std::size_t unit = FindFileMark(before) == FileMark::Utf16Le ? 2 : 1;
    for (const char c : {'\r', '\n'}) {
        const std::string lineEnd = std::string{c, '\0'}.substr(0, unit);
        for (auto at = before.find(lineEnd, first); at < last; at = before.find(lineEnd, at + 1)) {
            Require(at % unit != 0);  // the second half of a letter and the first of the next
        }
    }
}

// A comment's name can be commented out once more, but not the other way round.
inline bool IsKeyText(const std::string& name) {
    return !name.empty() && name.find_first_of("[;") != 0;
}

// `choice` says which line is changed and how.
inline void CheckOneEdit(IniDocument& document, CodePage codePage, unsigned choice) {
    if (document.SectionCount() == 0) {
        return;
    }
    const auto id = static_cast<SectionId>(choice % document.SectionCount());
    const std::string section(document.SectionName(id));
    const std::vector<LineId> lines = LinesOf(document, id);
    const LineId line = lines.empty() ? IniDocument::kNone : lines[(choice >> 8) % lines.size()];
    const bool hasKey = line != IniDocument::kNone && IsIniKey(document.Kind(line));
    const std::string key = hasKey ? std::string(document.KeyName(line)) : "new ключ";
    const std::string present(hasKey ? document.Value(line) : "'");
    const std::string values[] = {"plain", "",      "\"quoted ü\"",
                                  " 中\t", present, "\"" + present + "\""};
    const std::string& value = values[(choice >> 16) % std::size(values)];

    const std::string before = document.Bytes();
    const auto place = document.FindSection(section);
    const auto found = place ? document.FindKey(*place, key) : std::nullopt;
    const std::size_t sign =
        found ? before.find('=', document.OffsetOf(*found)) : std::string::npos;
    const IniEdit edit = document.SetValue(section, key, value);
    const std::string after = document.Bytes();
    Require(edit == IniEdit::Changed || after == before);
    Require(IsRefused(edit) ||
            document.FindValue(section, key) == UnquoteIniValue(TrimIniBlanks(value)));
    const IniDocument reread = IniDocument::Parse(after, codePage);
    Require(reread.FindValue(section, key) == document.FindValue(section, key));
    CheckOtherLines(before, after, sign);
    IniDocument fresh = IniDocument::Parse(before, codePage);
    fresh.SetValue(section, key, value);
    std::string edited = before;
    const std::vector<IniDocument::Edit> edits = fresh.Edits();
    for (auto change = edits.rbegin(); change != edits.rend(); ++change) {
        edited.replace(change->begin, change->end - change->begin, change->added);
    }
    Require(edited == fresh.Bytes());

    // Commenting out and back again gives the same bytes, if no line of the other form is there.
    if (hasKey && IsKeyText(key) && reread.FindValue(section, key) &&
        !reread.FindValue(section, ";" + key)) {
        IniDocument toggled = IniDocument::Parse(after, codePage);
        Require(toggled.ToggleComment(section, key, true) == IniEdit::Changed);
        Require(toggled.FindValue(section, ";" + key) == reread.FindValue(section, key));
        Require(toggled.ToggleComment(section, key, false) == IniEdit::Changed);
        Require(toggled.Bytes() == after);
    }

    const bool isRemoved = document.DeleteKey(section, key) == IniEdit::Changed;
    Require(!document.FindValue(section, key));
    Require(isRemoved == reread.FindValue(section, key).has_value());
    CheckLookUps(document);
    document.DeleteSection(section);
    Require(IniDocument::Parse(document.Bytes(), codePage).Bytes() == document.Bytes());
}

inline void CheckFile(const std::string& bytes, CodePage codePage, unsigned choice) {
    IniDocument document = IniDocument::Parse(bytes, codePage);
    Require(document.Bytes() == bytes);
    CheckLookUps(document);
    CheckOneEdit(document, codePage, choice);
}

}  // namespace tamarind
