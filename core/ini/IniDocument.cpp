#include "core/ini/IniDocument.h"

#include <algorithm>
#include <bitset>
#include <cstring>

#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"

namespace tamarind {
IniDocument IniDocument::Parse(std::string bytes, CodePage codePage) {
    IniDocument document;
    document.m_codePage = codePage;
    document.m_bytes = std::move(bytes);
    IniParser(document).ParseFile();
    document.m_parsedSize = document.m_bytes.size();
    return document;
}

std::string IniDocument::Bytes() const {
    std::string result(MarkBytes(m_mark));
    result.reserve(m_bytes.size() + m_tail.size());
    // Lines that still stand next to each other in `m_bytes` are copied together.
    TextSpan run;
    for (LineId id = m_firstLine; id != kNone; id = LineBehind(id)) {
        const IniLine& line = m_lines[id];
        if (line.kind == IniLineKind::Deleted) {
            continue;
        }
        if (line.bytes.begin == run.end) {
            run.end = line.bytes.end;
            continue;
        }
        result.append(m_bytes, run.begin, run.end - run.begin);
        run = line.bytes;
    }
    return result.append(m_bytes, run.begin, run.end - run.begin).append(m_tail);
}

std::vector<IniDocument::Edit> IniDocument::Edits() const {
    std::vector<Edit> edits;
    Edit edit;
    const auto endAt = [&](std::size_t end) {
        edit.end = end;
        if (edit.begin != edit.end || !edit.added.empty()) {
            edits.push_back(std::move(edit));
        }
        edit = {};
    };
    edit.begin = MarkBytes(m_mark).size();
    for (LineId id = m_firstLine; id != kNone; id = LineBehind(id)) {
        const IniLine& line = m_lines[id];
        if (line.kind == IniLineKind::Deleted) {
            continue;
        }
        if (line.bytes.begin < m_parsedSize) {
            endAt(line.bytes.begin);
            edit.begin = line.bytes.end;
        } else {
            edit.added.append(m_bytes, line.bytes.begin, line.bytes.end - line.bytes.begin);
        }
    }
    endAt(m_parsedSize);
    return edits;
}

std::string IniDocument::Decode(std::string_view bytes) const {
    if (m_mark == FileMark::Utf16Le) {
        return DecodeUtf16Le(bytes);
    }
    if (IsAscii(bytes)) {
        return std::string(bytes);
    }
    if (m_mark == FileMark::Utf8) {
        return DecodeCodePage(bytes, kCodePageUtf8);
    }
    const std::size_t inner = std::min(bytes.find(kUtf8MarkBytes), bytes.size());
    std::string text = DecodeCodePage(bytes.substr(0, inner), m_codePage);
    if (inner < bytes.size()) {
        text += DecodeCodePage(bytes.substr(inner + kUtf8MarkBytes.size()), kCodePageUtf8);
    }
    return text;
}

std::vector<std::string> IniDocument::LinesOf(std::string_view bytes) const {
    const bool isWide = m_mark == FileMark::Utf16Le;
    const std::string wide = isWide ? DecodeUtf16Le(bytes) : std::string();
    std::string_view rest = isWide ? wide : bytes;
    std::vector<std::string> lines;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = rest.substr(0, end);
        lines.push_back(isWide ? std::string(line) : Decode(line));
        rest.remove_prefix(rest.substr(end).starts_with("\r\n") ? end + 2
                                                                : std::min(end + 1, rest.size()));
    }
    return lines;
}

std::optional<IniDocument::SectionId> IniDocument::FindSection(std::string_view name) const {
    if (!m_sectionTable.IsMade()) {
        IndexSections();
    }
    name = TrimIniSpaces(name);
    const SectionId id = m_sectionTable.Find(SectionNames{this}, NameHash(name), name);
    return id == kNone ? std::nullopt : std::optional(id);
}

std::optional<IniDocument::LineId> IniDocument::FindKey(SectionId section,
                                                        std::string_view name) const {
    name = TrimIniSpaces(name);
    const LineId line = KeysOf(section).Find(KeyNames{this}, NameHash(name), name);
    return line == kNone ? std::nullopt : std::optional(line);
}

IniDocument::KeyLines IniDocument::FindKeyForms(SectionId section, std::string_view name,
                                                std::uint32_t hash) const {
    NameTable& keys = KeysOf(section);
    const auto find = [&](auto accepts) {
        return keys.FindForm(KeyNames{this}, hash, name, [this, name, accepts](LineId id) {
            const bool isActive = m_lines[id].kind == IniLineKind::Key;
            return accepts(isActive) &&
                   EqualsIgnoreCase(KeyName(id).substr(isActive ? 0 : 1), name);
        });
    };
    const LineId first = find([](bool) { return true; });
    if (first == kNone || m_lines[first].kind == IniLineKind::Key) {
        return {first, kNone};
    }
    return {find([](bool isActive) { return isActive; }), first};
}

std::vector<IniDocument::PlacedKey> IniDocument::KeysNamed(std::string_view name) const {
    const std::uint32_t hash = NameHash(name);
    std::vector<PlacedKey> found;
    SectionId next = 0;
    for (LineId id = m_sections.empty() ? kNone : m_sections.front().header; id < m_lines.size();
         ++id) {
        const IniLine& line = m_lines[id];
        next += line.kind == IniLineKind::Section ? 1 : 0;
        if (line.nameHash == hash && line.kind == IniLineKind::Key &&
            EqualsIgnoreCase(KeyName(id), name)) {
            found.push_back({next - 1, id});
        }
    }
    return found;
}

void IniDocument::ForgetKeys(SectionId section) const {
    std::uint32_t& number = m_sections[section].keyTable;
    if (number != kNone && number + 1 == m_keyTables.size()) {
        m_keyTables.pop_back();
        number = kNone;
    }
}

std::optional<std::string_view> IniDocument::FindValue(std::string_view section,
                                                       std::string_view key) const {
    const std::optional<SectionId> sectionId = FindSection(section);
    const std::optional<LineId> line = sectionId ? FindKey(*sectionId, key) : std::nullopt;
    return line ? std::optional(Value(*line)) : std::nullopt;
}

IniDocument::LineId IniDocument::FirstLine(SectionId section) const {
    return NextLine(m_sections[section].header);
}

bool IniDocument::IsRepeated(SectionId section, LineId line) const {
    KeysOf(section);
    return m_lines[line].repeatsName;
}

// A bit for each value of half a hash: two of 125 names share one in every ninth section.
bool IniDocument::AllNamesDiffer(SectionId section) const {
    std::bitset<std::size_t{1} << 16> seen;
    for (LineId id = FirstLine(section); id != kNone; id = NextLine(id)) {
        if (IsIniKey(m_lines[id].kind)) {
            auto bit = seen[m_lines[id].nameHash % seen.size()];
            if (bit) {
                return false;
            }
            bit = true;
        }
    }
    return true;
}

std::size_t IniDocument::KeyNameUnits(LineId line) const {
    const std::string_view name = KeyName(line);
    return m_lines[line].isAscii ? name.size() : Utf16Length(name);
}

IniDocument::LineParts IniDocument::DecodedParts(const IniLine& line) const {
    // AppendDecoded has put both lengths in front of the name.
    std::uint32_t lengths[2];
    const char* const name = m_decoded.data() + line.nameBegin;
    std::memcpy(lengths, name - sizeof lengths, sizeof lengths);
    return {{name, lengths[0]}, {name + lengths[0], lengths[1]}};
}

std::string_view IniDocument::Value(LineId line) const {
    const std::string_view value = QuotedValue(line);
    return m_lines[line].hasInnerMark ? value : UnquoteIniValue(value);
}

std::string_view IniDocument::QuotedValue(LineId line) const {
    const IniLine& record = m_lines[line];
    if (!IsIniKey(record.kind)) {
        return {};
    }
    if (record.isDecoded) {
        return DecodedParts(record).value;
    }
    const std::size_t end = record.bytes.end - record.lineEndLength;
    const char* const equals =
        m_bytes.data() + m_bytes.find('=', record.nameBegin + record.nameLength);
    return IniValueBehind(equals, {m_bytes.data(), end});
}

std::string_view IniDocument::SearchableBytes() const {
    return m_mark == FileMark::Utf16Le ? std::string_view() : std::string_view(m_bytes);
}

// The lines of a document that was not edited are sorted by their first byte.
IniDocument::LineId IniDocument::LineAt(std::size_t offset) const {
    const auto behind = std::ranges::upper_bound(
        m_lines, offset, {}, [](const IniLine& line) { return std::size_t{line.bytes.begin}; });
    return static_cast<LineId>(behind - m_lines.begin()) - 1;
}

std::vector<std::string> IniDocument::LineTexts(LineId line) const {
    const IniLine& record = m_lines[line];
    if (IsIniKey(record.kind)) {
        return {std::string(KeyName(line)) + "=" + std::string(QuotedValue(line))};
    }
    std::vector<std::string> texts;
    for (const std::string& text : LinesOf(BytesOf(line))) {
        if (const std::string_view trimmed = TrimIniBlanks(text); !trimmed.empty()) {
            texts.emplace_back(trimmed);
        }
    }
    return texts;
}

// From the last to the first, so that of several sections with one name the first one remains.
// Very many sections may all have the same few names, so that a table for all of them would be
// empty: it begins smaller, and again when it turns out too small.
void IniDocument::IndexSections() const {
    constexpr std::size_t kFirstRoom = std::size_t{1} << 16;
    std::size_t room = std::min(m_sections.size(), kFirstRoom);
    SectionId left = 0;
    do {
        m_sectionTable.Reset(room);
        room *= 8;
        left = static_cast<SectionId>(m_sections.size());
        for (; left > 0 && !m_sectionTable.IsCrowded(); --left) {
            m_sectionTable.Put(SectionNames{this}, left - 1);
        }
    } while (left > 0);
}

// Makes the table of a section, or a larger one. The lines come from the last to the first: each
// becomes the head of the list of lines with its name, and the first one ends up as the one that
// counts, in constant time however often a name is repeated.
void IniDocument::IndexKeys(SectionId section) const {
    std::uint32_t& number = m_sections[section].keyTable;
    if (number == kNone) {
        number = static_cast<std::uint32_t>(m_keyTables.size());
        m_keyTables.emplace_back();
    }
    NameTable& table = m_keyTables[number];
    const LineId header = m_sections[section].header;
    // While no line was added, the lines of a section have consecutive numbers.
    if (m_nextLines.empty()) {
        const LineId last = m_sections[section].lastLine;
        table.Reset(last - header);
        for (LineId id = last; id > header; --id) {
            IndexKey(table, id);
        }
        return;
    }
    std::vector<LineId> lines;
    for (LineId id = NextLine(header); id != kNone; id = NextLine(id)) {
        lines.push_back(id);
    }
    table.Reset(lines.size());
    std::for_each(lines.rbegin(), lines.rend(), [&](LineId id) { IndexKey(table, id); });
}

void IniDocument::IndexKey(NameTable& table, LineId id) const {
    if (!IsIniKey(m_lines[id].kind)) {
        return;
    }
    m_lines[id].repeatsName = false;
    const LineId next = table.Put(KeyNames{this}, id);
    if (next != kNone) {
        m_lines[next].repeatsName = true;
        m_nextOfSameName.resize(std::max(m_nextOfSameName.size(), m_lines.size()), kNone);
        m_nextOfSameName[id] = next;
    }
}

}  // namespace tamarind
