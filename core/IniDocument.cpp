#include "core/IniDocument.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/IniParser.h"
#include "core/Unicode.h"

namespace tamarind {
namespace {

// The smallest power of two that keeps an open-addressed table at most half full.
std::size_t TableSize(std::size_t entries) {
    return std::bit_ceil(2 * entries + 2);
}

}  // namespace

// Every bit of the result depends on every byte of the name.
std::uint32_t IniDocument::NameHash(std::string_view name) {
    name.remove_prefix(!name.empty() && name.front() == ';' ? 1 : 0);
    return static_cast<std::uint32_t>((HashIgnoreCase(name) * 0x9E3779B97F4A7C15U) >> 32);
}

IniDocument IniDocument::Parse(std::string bytes, CodePage codePage) {
    IniDocument document;
    document.m_codePage = codePage;
    document.m_bytes = std::move(bytes);
    IniParser(document).ParseFile();
    return document;
}

std::string IniDocument::Bytes() const {
    std::string result(MarkBytes(m_mark));
    result.reserve(m_bytes.size() + m_tail.size());
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

std::string_view IniDocument::SectionName(SectionId section) const {
    return Text(m_sections[section].name, m_sections[section].isDecoded);
}

std::optional<IniDocument::SectionId> IniDocument::FindSection(std::string_view name) const {
    EnsureSections();
    name = TrimIniSpaces(name);
    const std::uint32_t id = m_sectionSlots[SectionSlot(NameHash(name), name)];
    return id == kEmptySlot ? std::nullopt : std::optional(id);
}

std::optional<IniDocument::LineId> IniDocument::FindKey(SectionId section,
                                                        std::string_view name) const {
    name = TrimIniSpaces(name);
    const KeyTable& table = KeysOf(section);
    const LineId line = table.slots[KeySlot(table, NameHash(name), name)];
    return line == kEmptySlot ? std::nullopt : std::optional(line);
}

IniDocument::KeyLines IniDocument::FindKeyForms(SectionId section, std::string_view name,
                                                std::uint32_t hash) const {
    const KeyTable& table = KeysOf(section);
    const std::size_t mask = table.slots.size() - 1;
    KeyLines found;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const LineId id = table.slots[at];
        if (id == kEmptySlot) {
            return found;
        }
        if (id == kErasedSlot || m_lines[id].nameHash != hash) {
            continue;
        }
        const bool isActive = m_lines[id].kind == IniLineKind::Key;
        if (EqualsIgnoreCase(KeyName(id).substr(isActive ? 0 : 1), name)) {
            (isActive ? found.active : found.commented) = id;
            if (isActive) {
                return found;
            }
        }
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

bool IniDocument::IsRepeated(LineId line) const {
    KeysOf(m_lines[line].section);
    return m_lines[line].repeatsName;
}

std::size_t IniDocument::KeyNameUnits(LineId line) const {
    const std::string_view name = KeyName(line);
    return m_lines[line].isAscii ? name.size() : Utf16Length(name);
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
        std::uint32_t length = 0;
        std::memcpy(&length, m_decoded.data() + record.name.begin - sizeof length, sizeof length);
        return {m_decoded.data() + record.name.end, length};
    }
    const std::size_t end = record.bytes.end - record.lineEndLength;
    const char* const equals = m_bytes.data() + m_bytes.find('=', record.name.end);
    return IniValueBehind(equals, {m_bytes.data(), end});
}

std::string_view IniDocument::SearchableBytes() const {
    return m_mark == FileMark::Utf16Le ? std::string_view() : std::string_view(m_bytes);
}

IniDocument::LineId IniDocument::LineAt(std::size_t offset) const {
    const auto behind =
        std::upper_bound(m_lines.begin(), m_lines.end(), offset,
                         [](std::size_t at, const IniLine& line) { return at < line.bytes.begin; });
    return static_cast<LineId>(behind - m_lines.begin()) - 1;
}

std::string IniDocument::LineText(LineId line) const {
    const IniLine& record = m_lines[line];
    if (IsIniKey(record.kind)) {
        std::string text(KeyName(line));
        text += '=';
        return text += QuotedValue(line);
    }
    const std::string_view bytes = Text(record.bytes, false);
    if (m_mark == FileMark::Utf16Le) {
        const std::string text = DecodeUtf16Le(bytes);
        return std::string(
            TrimIniBlanks(std::string_view(text).substr(0, text.find_first_of("\r\n"))));
    }
    const std::string_view text =
        TrimIniBlanks(bytes.substr(0, bytes.size() - record.lineEndLength));
    return IsAscii(text)
               ? std::string(text)
               : DecodeCodePage(text, m_mark == FileMark::Utf8 ? kCodePageUtf8 : m_codePage);
}

void IniDocument::EnsureSections() const {
    if (m_sectionSlots.empty()) {
        IndexSections();
    }
}

void IniDocument::IndexSections() const {
    m_sectionSlots.assign(TableSize(m_sections.size()), kEmptySlot);
    for (SectionId id = 0; id < m_sections.size(); ++id) {
        IndexSection(id);
    }
}

// The first section of a name is the one that counts.
void IniDocument::IndexSection(SectionId id) const {
    const std::uint32_t hash = m_lines[m_sections[id].header].nameHash;
    std::uint32_t& slot = m_sectionSlots[SectionSlot(hash, SectionName(id))];
    if (slot == kEmptySlot) {
        slot = id;
    }
}

// The slot that holds the section, or the empty one where it belongs.
std::size_t IniDocument::SectionSlot(std::uint32_t hash, std::string_view name) const {
    const std::size_t mask = m_sectionSlots.size() - 1;
    std::size_t slot = hash & mask;
    for (; m_sectionSlots[slot] != kEmptySlot; slot = (slot + 1) & mask) {
        const SectionId id = m_sectionSlots[slot];
        if (m_lines[m_sections[id].header].nameHash == hash &&
            EqualsIgnoreCase(SectionName(id), name)) {
            break;
        }
    }
    return slot;
}

// Makes the section's table, or a larger one. The lines come from the last to the first, so that
// each becomes the head of the lines of its name and the first one ends up as the one that counts,
// in constant time however often a name is repeated.
void IniDocument::IndexKeys(SectionId section) const {
    m_keyTables.resize(m_sections.size());
    KeyTable& table = m_keyTables[section];
    table.used = 0;
    const LineId header = m_sections[section].header;
    if (m_nextLines.empty()) {
        const LineId last = m_sections[section].lastLine;
        table.slots.assign(TableSize(last - header), kEmptySlot);
        for (LineId id = last; id > header; --id) {
            IndexKey(table, id);
        }
        return;
    }
    std::vector<LineId> lines;
    for (LineId id = NextLine(header); id != kNone; id = NextLine(id)) {
        lines.push_back(id);
    }
    table.slots.assign(TableSize(lines.size()), kEmptySlot);
    std::for_each(lines.rbegin(), lines.rend(), [&](LineId id) { IndexKey(table, id); });
}

void IniDocument::IndexKey(KeyTable& table, LineId id) const {
    const IniLine& line = m_lines[id];
    if (!IsIniKey(line.kind)) {
        return;
    }
    LineId& slot = table.slots[KeySlot(table, line.nameHash, KeyName(id))];
    line.repeatsName = false;
    if (slot == kEmptySlot) {
        ++table.used;
    } else {
        m_lines[slot].repeatsName = true;
        m_nextOfSameName[id] = slot;
    }
    slot = id;
}

// The slot that holds the key, or the empty one where it belongs.
std::size_t IniDocument::KeySlot(const KeyTable& table, std::uint32_t hash,
                                 std::string_view name) const {
    const std::size_t mask = table.slots.size() - 1;
    std::size_t at = hash & mask;
    for (; table.slots[at] != kEmptySlot; at = (at + 1) & mask) {
        const LineId id = table.slots[at];
        if (id != kErasedSlot && m_lines[id].nameHash == hash &&
            EqualsIgnoreCase(KeyName(id), name)) {
            break;
        }
    }
    return at;
}

}  // namespace tamarind
