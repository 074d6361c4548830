#include "core/IniDocument.h"

#include <algorithm>

#include <bit>

#include "core/IniParser.h"
#include "core/Unicode.h"

namespace tamarind {
namespace {

// The smallest power of two that keeps an open-addressed table at most half full.
std::size_t TableSize(std::size_t entries) {
    return std::bit_ceil(2 * entries + 2);
}

std::uint32_t SlotNumber(std::uint64_t slot) {
    return static_cast<std::uint32_t>(slot);
}

std::uint32_t SlotHash(std::uint64_t slot) {
    return static_cast<std::uint32_t>(slot >> 32);
}

}  // namespace

// Every bit of the result depends on every byte of the name.
std::uint32_t IniDocument::KeyHash(SectionId section, std::string_view name) {
    const std::uint64_t hash = (HashIgnoreCase(name) + section) * 0x9E3779B97F4A7C15U;
    return static_cast<std::uint32_t>(hash >> 32);
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
    for (LineId id = m_firstLine; id != kNone; id = m_lines[id].next) {
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

std::string_view IniDocument::Text(TextSpan span, bool isDecoded) const {
    const std::string_view pool = isDecoded ? m_decoded : m_bytes;
    return pool.substr(span.begin, span.end - span.begin);
}

std::string_view IniDocument::SectionName(SectionId section) const {
    return Text(m_sections[section].name, m_sections[section].isDecoded);
}

std::optional<IniDocument::SectionId> IniDocument::FindSection(std::string_view name) const {
    EnsureIndex();
    name = TrimIniSpaces(name);
    const std::uint32_t id = SlotNumber(m_sectionSlots[SectionSlot(SectionHash(name), name)]);
    return id == kNone ? std::nullopt : std::optional(id);
}

std::optional<IniDocument::LineId> IniDocument::FindKey(SectionId section,
                                                        std::string_view name) const {
    EnsureIndex();
    name = TrimIniSpaces(name);
    const std::size_t slot = KeySlot(KeyHash(section, name), section, name);
    const std::uint32_t line = SlotNumber(m_keySlots[slot]);
    return line == kNone ? std::nullopt : std::optional(line);
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

IniDocument::LineId IniDocument::NextLine(LineId line) const {
    const std::uint32_t section = m_lines[line].section;
    do {
        line = m_lines[line].next;
    } while (line != kNone && m_lines[line].kind == IniLineKind::Deleted);
    return line != kNone && m_lines[line].section == section ? line : kNone;
}

bool IniDocument::IsRepeated(LineId line) const {
    EnsureIndex();
    return m_lines[line].repeatsName;
}

std::string_view IniDocument::KeyName(LineId line) const {
    return Text(m_lines[line].name, m_lines[line].isDecoded);
}

std::string_view IniDocument::Value(LineId line) const {
    const std::string_view value = QuotedValue(line);
    return m_lines[line].hasInnerMark ? value : UnquoteIniValue(value);
}

std::string_view IniDocument::QuotedValue(LineId line) const {
    return Text(m_lines[line].value, m_lines[line].isDecoded);
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
    if (record.kind == IniLineKind::Key || record.kind == IniLineKind::CommentedKey) {
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

void IniDocument::EnsureIndex() const {
    if (!m_isIndexed) {
        m_isIndexed = true;
        IndexSections();
        IndexKeys();
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
    const std::uint32_t hash = SectionHash(SectionName(id));
    std::uint64_t& slot = m_sectionSlots[SectionSlot(hash, SectionName(id))];
    if (slot == kEmptySlot) {
        slot = (std::uint64_t{hash} << 32) | id;
    }
}

// The slot that holds the section, or the empty one where it belongs.
std::size_t IniDocument::SectionSlot(std::uint32_t hash, std::string_view name) const {
    const std::size_t mask = m_sectionSlots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_sectionSlots[slot] != kEmptySlot &&
           (SlotHash(m_sectionSlots[slot]) != hash ||
            !EqualsIgnoreCase(SectionName(SlotNumber(m_sectionSlots[slot])), name))) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

// Walks backwards, so that each line becomes the head of the lines of its name and the first one
// ends up as the one that counts, in constant time however often a name is repeated.
void IniDocument::IndexKeys() const {
    std::size_t keys = 0;
    for (const IniLine& line : m_lines) {
        keys += line.kind == IniLineKind::Key || line.kind == IniLineKind::CommentedKey ? 1U : 0U;
    }
    m_keySlots.assign(TableSize(keys), kEmptySlot);
    m_usedKeySlots = keys;
    for (auto id = static_cast<LineId>(m_lines.size()); id-- > 0;) {
        const IniLine& line = m_lines[id];
        line.repeatsName = false;
        const bool isKey = line.kind == IniLineKind::Key || line.kind == IniLineKind::CommentedKey;
        if (!isKey || line.section == kNone) {
            continue;
        }
        const std::string_view name = KeyName(id);
        const std::uint32_t hash = KeyHash(line.section, name);
        const std::size_t slot = KeySlot(hash, line.section, name);
        line.nextOfSameName = SlotNumber(m_keySlots[slot]);
        if (line.nextOfSameName != kNone) {
            m_lines[line.nextOfSameName].repeatsName = true;
        }
        m_keySlots[slot] = (std::uint64_t{hash} << 32) | id;
    }
}

// The slot that holds the key, or the empty one where it belongs.
std::size_t IniDocument::KeySlot(std::uint32_t hash, SectionId section,
                                 std::string_view name) const {
    const std::size_t mask = m_keySlots.size() - 1;
    std::size_t slot = hash & mask;
    for (; m_keySlots[slot] != kEmptySlot; slot = (slot + 1) & mask) {
        if (SlotHash(m_keySlots[slot]) != hash) {
            continue;
        }
        const std::uint32_t line = SlotNumber(m_keySlots[slot]);
        if (line != kNone && m_lines[line].section == section &&
            EqualsIgnoreCase(KeyName(line), name)) {
            break;
        }
    }
    return slot;
}

}  // namespace tamarind
