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

bool IsKeyKind(IniLineKind kind) {
    return kind == IniLineKind::Key || kind == IniLineKind::CommentedKey;
}

}  // namespace

// Every bit of the result depends on every byte of the name.
std::uint32_t IniDocument::NameHash(std::string_view name) {
    name.remove_prefix(!name.empty() && name.front() == ';' ? 1 : 0);
    return static_cast<std::uint32_t>(HashIgnoreCase(name) >> 32);
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
    const std::uint32_t id = m_sectionSlots[SectionSlot(NameHash(name), name)];
    return id == kEmptySlot ? std::nullopt : std::optional(id);
}

std::optional<IniDocument::LineId> IniDocument::FindKey(SectionId section,
                                                        std::string_view name) const {
    EnsureIndex();
    name = TrimIniSpaces(name);
    const LineId line = m_keySlots[KeySlot(section, NameHash(name), name)];
    return line == kEmptySlot ? std::nullopt : std::optional(line);
}

IniDocument::KeyLines IniDocument::FindKeyForms(SectionId section, std::string_view name,
                                                std::uint32_t hash) const {
    EnsureIndex();
    const KeyTable& table = m_keyTables[section];
    KeyLines found;
    for (std::uint32_t at = hash & table.mask;; at = (at + 1) & table.mask) {
        const LineId id = m_keySlots[table.begin + at];
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

void IniDocument::IndexKeys() const {
    std::vector<std::size_t> counts(m_sections.size());
    std::size_t slots = 0;
    for (const IniLine& line : m_lines) {
        if (IsKeyKind(line.kind) && line.section != kNone) {
            ++counts[line.section];
        }
    }
    for (const std::size_t keys : counts) {
        slots += TableSize(keys);
    }
    m_keyTables.assign(m_sections.size(), {});
    m_keySlots.clear();
    m_keySlots.reserve(slots);
    for (SectionId section = 0; section < counts.size(); ++section) {
        AddKeyTable(section, counts[section]);
    }
    for (auto id = static_cast<LineId>(m_lines.size()); id-- > 0;) {
        IndexKey(id);
    }
}

// Once a section's table has grown too small.
void IniDocument::IndexKeysOf(SectionId section) const {
    std::vector<LineId> lines;
    for (LineId id = FirstLine(section); id != kNone; id = NextLine(id)) {
        lines.push_back(id);
    }
    AddKeyTable(section, 2 * lines.size());
    std::for_each(lines.rbegin(), lines.rend(), [this](LineId id) { IndexKey(id); });
}

// Gives the section a new table with room for so many keys.
void IniDocument::AddKeyTable(SectionId section, std::size_t keys) const {
    const std::size_t size = TableSize(keys);
    m_keyTables[section] = {static_cast<std::uint32_t>(m_keySlots.size()),
                            static_cast<std::uint32_t>(size - 1), 0};
    m_keySlots.resize(m_keySlots.size() + size, kEmptySlot);
}

// The lines come from the last to the first, so that each becomes the head of the lines of its name
// and the first one ends up as the one that counts, in constant time however often a name is
// repeated.
void IniDocument::IndexKey(LineId id) const {
    const IniLine& line = m_lines[id];
    line.repeatsName = false;
    if (!IsKeyKind(line.kind) || line.section == kNone) {
        return;
    }
    std::uint32_t& slot = m_keySlots[KeySlot(line.section, line.nameHash, KeyName(id))];
    line.nextOfSameName = slot == kEmptySlot ? kNone : slot;
    if (slot == kEmptySlot) {
        ++m_keyTables[line.section].used;
    } else {
        m_lines[slot].repeatsName = true;
    }
    slot = id;
}

// The slot that holds the key, or the empty one where it belongs.
std::size_t IniDocument::KeySlot(SectionId section, std::uint32_t hash,
                                 std::string_view name) const {
    const KeyTable& table = m_keyTables[section];
    std::uint32_t at = hash & table.mask;
    for (; m_keySlots[table.begin + at] != kEmptySlot; at = (at + 1) & table.mask) {
        const LineId id = m_keySlots[table.begin + at];
        if (id != kErasedSlot && m_lines[id].nameHash == hash &&
            EqualsIgnoreCase(KeyName(id), name)) {
            break;
        }
    }
    return std::size_t{table.begin} + at;
}

}  // namespace tamarind
