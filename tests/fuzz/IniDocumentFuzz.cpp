// The input's last five bytes choose the code page and the edits, so that a settings file as it
// stands is a useful input; what comes before them is the file.
#include <algorithm>
#include <vector>

#include "core/ini/IniDocument.h"
#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"
#include "tests/fuzz/Require.h"

namespace tamarind {
namespace {

using LineId = IniDocument::LineId;
using SectionId = IniDocument::SectionId;

std::vector<LineId> LinesOf(const IniDocument& document, SectionId section) {
    std::vector<LineId> lines;
    for (LineId line = document.FirstLine(section); line != IniDocument::kNone;
         line = document.NextLine(line)) {
        lines.push_back(line);
    }
    return lines;
}

// The first keys and sections of every name, found without the tables.
void CheckLookUps(const IniDocument& document) {
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
        lines.resize(std::min<std::size_t>(lines.size(), 24));
        for (const LineId line : lines) {
            if (!IsIniKey(document.Kind(line))) {
                continue;
            }
            const auto first = std::find_if(lines.begin(), lines.end(), [&](LineId other) {
                return IsIniKey(document.Kind(other)) &&
                       EqualsIgnoreCase(document.KeyName(other), document.KeyName(line));
            });
            Require(document.FindKey(id, document.KeyName(line)) == *first);
            Require(document.IsRepeated(line) == (*first != line));
            Require(IsValidUtf8(document.KeyName(line)) && IsValidUtf8(document.Value(line)));
        }
    }
}

// What an edit took away from the bytes is part of one line, or nothing where it added a key.
void CheckOtherLines(const std::string& before, const std::string& after, bool hadKey) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t front = 0;
    while (front < shorter && before[front] == after[front]) {
        ++front;
    }
    std::size_t back = 0;
    while (back < shorter - front &&
           before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
        ++back;
    }
    const std::string removed = before.substr(front, before.size() - front - back);
    Require(removed.empty() || hadKey);
    Require(removed.find_first_of("\r\n") == std::string::npos ||
            FindFileMark(before) == FileMark::Utf16Le);
}

// A comment's name can be commented out once more, but not the other way round.
bool IsKeyText(const std::string& name) {
    return !name.empty() && name.find_first_of("[;") != 0;
}

void CheckEdits(IniDocument& document, CodePage codePage, unsigned choice) {
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
    const bool hadKey = document.FindValue(section, key).has_value();
    const IniEdit edit = document.SetValue(section, key, value);
    const std::string after = document.Bytes();
    Require(edit == IniEdit::Changed || after == before);
    Require(IsRefused(edit) ||
            document.FindValue(section, key) == UnquoteIniValue(TrimIniBlanks(value)));
    const IniDocument reread = IniDocument::Parse(after, codePage);
    Require(reread.FindValue(section, key) == document.FindValue(section, key));
    CheckOtherLines(before, after, hadKey);

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

}  // namespace
}  // namespace tamarind

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace tamarind;
    constexpr CodePage kCodePages[] = {1252, 1251, 936, 932, 950, kCodePageUtf8};
    constexpr std::size_t kChoiceBytes = 5;
    const std::size_t length = size < kChoiceBytes ? 0 : size - kChoiceBytes;
    const unsigned char* const choices = data + length;
    unsigned choice = 0;
    for (std::size_t i = 1; i < std::min(size, kChoiceBytes); ++i) {
        choice = (choice << 8) | choices[i];
    }
    const CodePage codePage = kCodePages[size == 0 ? 0 : choices[0] % std::size(kCodePages)];
    const std::string bytes = FuzzedFile(data, length);
    IniDocument document = IniDocument::Parse(bytes, codePage);
    Require(document.Bytes() == bytes);
    CheckLookUps(document);
    CheckEdits(document, codePage, choice);
    return 0;
}
