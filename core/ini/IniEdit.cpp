// The editing half of IniDocument.
#include "core/ini/IniDocument.h"

#include <numeric>

#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

// Whether a text can be part of a line: it must be valid UTF-8 without characters that end the
// line, or that the Windows functions for INI files take for the end of all text (NUL).
bool IsStorable(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos &&
           IsValidUtf8(text);
}

// Whether a header or a key line with this name would be read back as this name.
bool IsSectionName(std::string_view name) {
    return name.find(']') == std::string_view::npos && TrimIniBlanks(name) == name;
}

bool IsKeyName(std::string_view name) {
    return name.find('=') == std::string_view::npos && TrimIniBlanks(name) == name &&
           !name.starts_with('[');
}

}  // namespace

IniEdit IniDocument::SetValue(std::string_view section, std::string_view key,
                              std::string_view value) {
    section = TrimIniSpaces(section);
    key = TrimIniSpaces(key);
    if (!IsStorable(section) || !IsStorable(key) || !IsStorable(value)) {
        return IniEdit::TextNotStorable;
    }
    std::optional<SectionId> sectionId = FindSection(section);
    if (const auto line = sectionId ? FindKey(*sectionId, key) : std::nullopt) {
        return ReplaceValue(*line, value);
    }
    if (!IsKeyName(key) || (!sectionId && !IsSectionName(section))) {
        return IniEdit::TextNotStorable;
    }
    if (!IsText()) {
        return IniEdit::FileNotText;
    }
    if (!EncodeName(key)) {
        return IniEdit::NameNotEncodable;
    }
    if (!sectionId) {
        sectionId = AddSection(section);
    }
    return sectionId ? InsertKey(*sectionId, key, value) : IniEdit::NameNotEncodable;
}

// Text has no NULs except as halves of UTF-16 characters. UTF-16 with the other order of bytes
// (big-endian), which is not supported, nearly always has them; an empty file of that kind has
// nothing but its mark, FE FF.
bool IniDocument::IsText() const {
    if (!m_isText) {
        const bool hasOtherOrder = m_bytes.starts_with("\xFE\xFF");
        m_isText = m_mark == FileMark::Utf16Le ||
                   (!hasOtherOrder && m_bytes.find('\0') == std::string::npos);
    }
    return *m_isText;
}

IniEdit IniDocument::DeleteValue(std::string_view section, std::string_view key) {
    const std::optional<SectionId> sectionId = FindSection(section);
    return sectionId && RemoveKeyLine(*sectionId, key) ? IniEdit::Changed : IniEdit::Unchanged;
}

IniEdit IniDocument::DeleteKey(std::string_view section, std::string_view key) {
    IniEdit result = IniEdit::Unchanged;
    while (DeleteValue(section, key) == IniEdit::Changed) {
        result = IniEdit::Changed;
    }
    return result;
}

IniEdit IniDocument::ToggleComment(std::string_view section, std::string_view key,
                                   bool isCommented) {
    const std::string commented = ";" + std::string(key);
    const std::optional<SectionId> sectionId = FindSection(section);
    const auto line = sectionId ? FindKey(*sectionId, isCommented ? key : commented) : std::nullopt;
    if (!line) {
        return IniEdit::Unchanged;
    }
    if (!IsKeyName(key)) {
        return IniEdit::TextNotStorable;
    }
    RemoveFromIndex(*sectionId, *line);
    const std::string mark = EncodeAscii(";");
    const TextSpan whole = m_lines[*line].bytes;
    std::string bytes = m_bytes.substr(whole.begin, whole.end - whole.begin);
    std::size_t at = 0;
    const bool isWide = mark.size() == 2;
    while (IsIniBlank(bytes[at]) && (!isWide || bytes[at + 1] == '\0')) {
        at += mark.size();
    }
    if (isCommented) {
        bytes.insert(at, mark);
    } else {
        bytes.erase(at, mark.size());
        // This line may now be the last key of the section.
        m_sections[*sectionId].lastKey = kNone;
    }
    SetLineBytes(*line, bytes);
    AddToIndex(*sectionId, *line);
    return IniEdit::Changed;
}

// What is left of the section belongs to the one above it from now on, and a second section of that
// name may count now. Parsing the result again gets all of this right.
IniEdit IniDocument::DeleteSection(std::string_view section) {
    const std::optional<SectionId> found = FindSection(section);
    if (!found) {
        return IniEdit::Unchanged;
    }
    for (LineId line = FirstLine(*found); line != kNone; line = NextLine(line)) {
        if (m_lines[line].kind == IniLineKind::Key) {
            m_lines[line].kind = IniLineKind::Deleted;
        }
    }
    m_lines[m_sections[*found].header].kind = IniLineKind::Deleted;
    *this = Parse(Bytes(), m_codePage);
    return IniEdit::Changed;
}

IniEdit IniDocument::DeleteFileLine(std::size_t number, std::string_view text) {
    std::string bytes = Bytes();
    const std::size_t unit = BytesPerUnit();
    const auto unitAt = [&](std::size_t at) {
        const bool isThere = at + unit <= bytes.size();
        const bool isAscii = isThere && (unit == 1 || bytes[at + 1] == 0);
        return isAscii ? bytes[at] : '\x01';
    };
    std::size_t begin = MarkBytes(m_mark).size();
    for (std::size_t line = 1; begin < bytes.size(); ++line) {
        std::size_t end = begin;
        while (end < bytes.size() && unitAt(end) != '\r' && unitAt(end) != '\n') {
            end += unit;
        }
        end = std::min(end, bytes.size());
        const std::string_view content = std::string_view(bytes).substr(begin, end - begin);
        const bool isPair = unitAt(end) == '\r' && unitAt(end + unit) == '\n';
        end = std::min(end + (isPair ? 2 : 1) * unit, bytes.size());
        if (line == number) {
            const std::vector<std::string> texts = LinesOf(content);
            if (texts.size() != 1 || texts.front() != text) {
                return IniEdit::Unchanged;
            }
            bytes.erase(begin, end - begin);
            *this = Parse(std::move(bytes), m_codePage);
            return IniEdit::Changed;
        }
        begin = end;
    }
    return IniEdit::Unchanged;
}

// A line that reads as `value` stays as it is, unless writing `value` would be read as something
// else. Example: ""1"" (two pairs of quotes) reads as "1", and if "1" is written, it is to be read
// as 1.
IniEdit IniDocument::ReplaceValue(LineId line, std::string_view value) {
    const bool saysSo = Value(line) == value || QuotedValue(line) == value;
    if (saysSo && Value(line) == UnquoteIniValue(TrimIniBlanks(value))) {
        return IniEdit::Unchanged;
    }
    const TextSpan span = ValueBytes(line);
    const TextSpan whole = m_lines[line].bytes;
    const std::string encoded = EncodeValue(value, m_lines[line].hasInnerMark);
    if (m_bytes.compare(span.begin, span.end - span.begin, encoded) == 0) {
        return IniEdit::Unchanged;
    }
    std::string bytes = m_bytes.substr(whole.begin, span.begin - whole.begin);
    bytes += encoded;
    bytes.append(m_bytes, span.end, whole.end - span.end);
    SetLineBytes(line, bytes);
    return IniEdit::Changed;
}

IniEdit IniDocument::InsertKey(SectionId section, std::string_view key, std::string_view value) {
    const std::string lineEnd = LineEndFor(section);
    const LineId previous = LastKeyOf(section);
    CompleteLastLine(previous, lineEnd);
    const LineId line =
        AppendLine(*EncodeName(key) + EncodeAscii("=") + EncodeValue(value, false) + lineEnd);
    LinkBehind(previous, line, section);
    m_sections[section].lastKey = line;
    AddToIndex(section, line);
    return IniEdit::Changed;
}

// For a line whose name no other line of its section has.
void IniDocument::AddToIndex(SectionId section, LineId line) {
    if (m_sections[section].keyTable == kNone) {
        return;  // the first look-up will find it
    }
    NameTable& table = KeysOf(section);
    if (table.IsCrowded()) {
        IndexKeys(section);
    } else {
        IndexKey(table, line);
    }
}

// For the first line of a name. The next line of that name takes its place.
void IniDocument::RemoveFromIndex(SectionId section, LineId line) {
    NameTable& table = KeysOf(section);
    const LineId next = NextOfSameName(line);
    if (next == kNone) {
        table.Erase(KeyNames{this}, line);
    } else {
        m_lines[next].repeatsName = false;
        table.Put(KeyNames{this}, next);
        m_nextOfSameName[line] = kNone;
    }
    if (m_sections[section].lastKey == line) {
        m_sections[section].lastKey = kNone;
    }
}

// The last active key of the section, or its header if there is none. Commented-out keys do not
// count.
IniDocument::LineId IniDocument::LastKeyOf(SectionId section) const {
    LineId last = m_sections[section].lastKey;
    if (last == kNone) {
        last = m_sections[section].header;
        for (LineId line = FirstLine(section); line != kNone; line = NextLine(line)) {
            last = m_lines[line].kind == IniLineKind::Key ? line : last;
        }
    }
    return last;
}

std::optional<IniDocument::SectionId> IniDocument::AddSection(std::string_view name) {
    const std::optional<std::string> encoded = EncodeName(name);
    if (!encoded) {
        return std::nullopt;
    }
    std::string lineEnd = EncodeAscii("\r\n");
    if (m_firstLine != kNone && m_lines[m_firstLine].lineEndLength > 0) {
        lineEnd = LineEndOf(m_firstLine);
    }
    const LineId previous = m_lastLine;
    if (previous != kNone) {
        CompleteLastLine(previous, lineEnd);
    }
    const auto section = static_cast<SectionId>(m_sections.size());
    const LineId header = AppendLine(EncodeAscii("[") + *encoded + EncodeAscii("]") + lineEnd);
    m_sections.push_back({.header = header, .lastKey = header, .lastLine = header});
    LinkBehind(previous, header, section);
    if (m_sectionTable.IsCrowded()) {
        IndexSections();
    } else {
        m_sectionTable.Put(SectionNames{this}, section);
    }
    return section;
}

bool IniDocument::RemoveKeyLine(SectionId section, std::string_view key) {
    const std::optional<LineId> found = FindKey(section, key);
    if (!found) {
        return false;
    }
    RemoveFromIndex(section, *found);
    m_lines[*found].kind = IniLineKind::Deleted;
    return true;
}

// The last line of a file may have no line end, which it needs when another line is to follow it.
void IniDocument::CompleteLastLine(LineId line, std::string_view lineEnd) {
    const IniLine& last = m_lines[line];
    if (last.kind != IniLineKind::Deleted && last.lineEndLength == 0) {
        std::string bytes = m_bytes.substr(last.bytes.begin, last.bytes.end - last.bytes.begin);
        bytes += lineEnd;
        SetLineBytes(line, bytes);
    }
}

IniDocument::LineId IniDocument::AppendLine(std::string_view bytes) {
    const auto id = static_cast<LineId>(m_lines.size());
    if (m_nextLines.empty()) {
        // From now on the order of the lines differs from that of their numbers.
        m_nextLines.resize(m_lines.size());
        std::iota(m_nextLines.begin(), m_nextLines.end(), LineId{1});
        if (m_lastLine != kNone) {
            m_nextLines[m_lastLine] = kNone;
        }
    }
    m_nextLines.push_back(kNone);
    m_lines.emplace_back();
    SetLineBytes(id, bytes);
    return id;
}

void IniDocument::LinkBehind(LineId previous, LineId line, SectionId section) {
    m_nextLines[line] = previous == kNone ? kNone : m_nextLines[previous];
    (previous == kNone ? m_firstLine : m_nextLines[previous]) = line;
    if (m_lastLine == previous) {
        m_lastLine = line;
    }
    LineId& lastLine = m_sections[section].lastLine;
    if (lastLine == previous) {
        lastLine = line;
    }
}

void IniDocument::SetLineBytes(LineId id, std::string_view bytes) {
    IniLine& line = m_lines[id];
    line.bytes.begin = static_cast<std::uint32_t>(m_bytes.size());
    m_bytes += bytes;
    line.bytes.end = static_cast<std::uint32_t>(m_bytes.size());
    const std::string_view carriageReturn =
        m_mark == FileMark::Utf16Le ? std::string_view("\r\0", 2) : "\r";
    const std::string_view lineFeed =
        m_mark == FileMark::Utf16Le ? std::string_view("\n\0", 2) : "\n";
    // `end` is in the encoding of the file.
    const auto endsWith = [&](std::string_view end) {
        return bytes.size() >= end.size() && bytes.substr(bytes.size() - end.size()) == end;
    };
    line.lineEndLength = 0;
    if (endsWith(lineFeed)) {
        line.lineEndLength = 1;
        bytes.remove_suffix(lineFeed.size());
    }
    if (endsWith(carriageReturn)) {
        ++line.lineEndLength;
    }
    IniParser(*this).ParseLine(line);
}

// The place of the value between the blanks around it, quotes included.
TextSpan IniDocument::ValueBytes(LineId line) const {
    const std::size_t unit = m_mark == FileMark::Utf16Le ? 2 : 1;
    const auto isBlank = [&](std::size_t at) {
        return IsIniBlank(m_bytes[at]) && (unit == 1 || m_bytes[at + 1] == '\0');
    };
    const auto isEquals = [&](std::size_t at) {
        return m_bytes[at] == '=' && (unit == 1 || m_bytes[at + 1] == '\0');
    };
    std::size_t begin = m_lines[line].bytes.begin;
    std::size_t end = m_lines[line].bytes.end - unit * m_lines[line].lineEndLength;
    while (!isEquals(begin)) {
        begin += unit;
    }
    begin += unit;
    while (begin < end && isBlank(begin)) {
        begin += unit;
    }
    while (end > begin && isBlank(end - unit)) {
        end -= unit;
    }
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

std::string IniDocument::EncodeAscii(std::string_view text) const {
    return m_mark == FileMark::Utf16Le ? EncodeUtf16Le(text) : std::string(text);
}

std::optional<std::string> IniDocument::EncodeName(std::string_view name) const {
    if (m_mark != FileMark::None || IsAscii(name)) {
        return EncodeAscii(name);
    }
    return EncodeCodePage(name, m_codePage);
}

// A value that the code page of a file without a mark cannot hold is stored as UTF-8 with a mark of
// its own (EF BB BF), as Total Commander does. The same is done for a value that would otherwise be
// read as such a value, and a value that had this form keeps it. Readers look for the mark after
// they have removed outer blanks and quotes, so it goes inside the quotes.
std::string IniDocument::EncodeValue(std::string_view value, bool withInnerMark) const {
    if (m_mark != FileMark::None) {
        return EncodeAscii(value);
    }
    if (!withInnerMark) {
        const std::optional<std::string> encoded = EncodeName(value);
        if (encoded && FindFileMark(UnquoteIniValue(TrimIniBlanks(*encoded))) != FileMark::Utf8) {
            return *encoded;
        }
    }
    const std::string_view inner = UnquoteIniValue(TrimIniBlanks(value));
    const auto begin = static_cast<std::size_t>(inner.data() - value.data());
    std::string bytes(value.substr(0, begin));
    bytes += kUtf8MarkBytes;
    return bytes += value.substr(begin);
}

std::string IniDocument::LineEndOf(LineId line) const {
    const std::size_t unit = m_mark == FileMark::Utf16Le ? 2 : 1;
    const std::size_t size = unit * m_lines[line].lineEndLength;
    return m_bytes.substr(m_lines[line].bytes.end - size, size);
}

// New lines end like the last line of the section, or else like the first one of the file, or with
// CRLF.
std::string IniDocument::LineEndFor(SectionId section) const {
    std::string lineEnd = LineEndOf(m_sections[section].lastLine);
    if (lineEnd.empty()) {
        lineEnd = LineEndOf(m_firstLine);
    }
    return lineEnd.empty() ? EncodeAscii("\r\n") : lineEnd;
}

}  // namespace tamarind
