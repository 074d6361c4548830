#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniLine.h"
#include "core/text/NameTable.h"
#include "core/text/TextEncoding.h"

namespace tamarind {

// What an edit of a document came to.
enum class IniEdit {
    Unchanged,  // it says so already
    Changed,
    NameNotEncodable,  // the file's encoding lacks a character of the section or key name
    TextNotStorable,   // it would be read as something else: line breaks, NULs, "=" in a key name
    FileNotText,       // lines cannot be added: it is binary, or in an encoding that is not known
};

inline bool IsRefused(IniEdit edit) {
    return edit == IniEdit::NameNotEncodable || edit == IniEdit::TextNotStorable ||
           edit == IniEdit::FileNotText;
}

// An INI file in memory, line by line as it stands: what is not edited is written back byte for
// byte, whatever it is.
//
//   file    = [mark] { line }
//   line    = blanks ( "[" name [ "]" anything ] | ";" anything | name "=" value | anything )
//   blanks  = { space | tab | vertical tab }, also around names and values
//
// A line ends with CRLF, LF or CR. Section and key names compare by EqualsIgnoreCase; of two
// sections or keys of one name the first counts. A line ";name=value" is a key of its own by the
// name ";name", so that a key that was commented out can be read and changed.
//
// Views that a document gives out hold until it is edited or gone.
class IniDocument {
public:
    using SectionId = std::uint32_t;
    using LineId = std::uint32_t;
    static constexpr std::uint32_t kNone = NameTable::kNone;

    // `bytes` holds less than 2 GB. A file without a mark is in `codePage`.
    static IniDocument Parse(std::string bytes, CodePage codePage);

    // The file's bytes with all edits.
    std::string Bytes() const;

    // Prose in a row counts as one.
    std::size_t LineCount() const { return m_lines.size(); }
    std::size_t SectionCount() const { return m_sections.size(); }
    std::string_view SectionName(SectionId section) const {
        return KeyName(m_sections[section].header);
    }

    // The first section of that name; spaces around the name are ignored.
    std::optional<SectionId> FindSection(std::string_view name) const;

    // The first line of that key; spaces around the name are ignored. ";name" finds the
    // commented-out key.
    std::optional<LineId> FindKey(SectionId section, std::string_view name) const;

    // The first lines of a key and of the commented-out key of the same name, or kNone; the second
    // is looked for only without the first. `hash` is the name's.
    struct KeyLines {
        LineId active = kNone;
        LineId commented = kNone;
    };
    KeyLines FindKeyForms(SectionId section, std::string_view name, std::uint32_t hash) const;

    // Equal for names that compare equal, in whatever document, and for a key and the commented-out
    // key of its name: who looks for the names of one document in another need not read them.
    static std::uint32_t NameHash(std::string_view name) { return NameTable::HashOf(name); }
    std::uint32_t NameHash(LineId line) const { return m_lines[line].nameHash; }

    // The value of a key as a reader sees it (one pair of equal outer quotes removed), or nothing
    // when the section or the key is missing.
    std::optional<std::string_view> FindValue(std::string_view section, std::string_view key) const;

    // The lines of a section behind its header, in order: FirstLine, NextLine, ... until kNone.
    // Prose in a row is one.
    LineId FirstLine(SectionId section) const;
    LineId NextLine(LineId line) const {
        const std::uint32_t section = m_lines[line].section;
        do {
            line = LineBehind(line);
        } while (line != kNone && m_lines[line].kind == IniLineKind::Deleted);
        return line != kNone && m_lines[line].section == section ? line : kNone;
    }

    IniLineKind Kind(LineId line) const { return m_lines[line].kind; }
    bool IsRepeated(LineId line) const;
    std::string_view KeyName(LineId line) const {
        return Text(m_lines[line].name, m_lines[line].isDecoded);
    }
    // The name's length in UTF-16 units, for which most names need not be read.
    std::size_t KeyNameUnits(LineId line) const;
    std::string_view Value(LineId line) const;
    // As Value, but with the outer quotes.
    std::string_view QuotedValue(LineId line) const;
    // The bytes of a document that was not edited since it was read, in which every ASCII text of
    // the document stands as it is; empty where its encoding makes that impossible.
    std::string_view SearchableBytes() const;
    // The line that a byte of them belongs to, and the first byte of a line.
    LineId LineAt(std::size_t offset) const;
    std::size_t OffsetOf(LineId line) const { return m_lines[line].bytes.begin; }

    // The line's whole text between its outer blanks; of prose, those of its lines that have one.
    std::vector<std::string> LineTexts(LineId line) const;

    // Sets the value of the key's first line, so that it is read as `value` without outer blanks
    // and one pair of outer quotes; a new key goes behind the section's last key line, a new
    // section to the end of the file. A line that says `value` and reads so already keeps its
    // bytes.
    IniEdit SetValue(std::string_view section, std::string_view key, std::string_view value);

    // Removes the first line of that name.
    IniEdit DeleteValue(std::string_view section, std::string_view key);

    // Removes every line of that name, so that the key is really gone.
    IniEdit DeleteKey(std::string_view section, std::string_view key);

    // Turns the first line of an active key into the commented-out key of that name, or the other
    // way round, where it stands: only the ";" in front of the name changes.
    IniEdit ToggleComment(std::string_view section, std::string_view key, bool isCommented);

    // Removes the first section of that name: its header and key lines. Comments stay.
    IniEdit DeleteSection(std::string_view section);

private:
    friend class IniParser;

    struct Section {
        LineId header = kNone;
        LineId lastKey = kNone;   // the header while there is none; kNone: to be looked for
        LineId lastLine = kNone;  // the header while there is none
        mutable std::uint32_t keyTable = kNone;  // among the key tables; none before a look-up
    };

    // What the tables are told of their numbers.
    struct SectionNames {
        const IniDocument* document;
        std::string_view Name(SectionId id) const { return document->SectionName(id); }
        std::uint32_t Hash(SectionId id) const {
            return document->m_lines[document->m_sections[id].header].nameHash;
        }
    };
    struct KeyNames {
        const IniDocument* document;
        std::string_view Name(LineId id) const { return document->KeyName(id); }
        std::uint32_t Hash(LineId id) const { return document->m_lines[id].nameHash; }
    };

    LineId LineBehind(LineId line) const {
        return !m_nextLines.empty()        ? m_nextLines[line]
               : line + 1 < m_lines.size() ? line + 1
                                           : kNone;
    }
    std::string_view Text(TextSpan span, bool isDecoded) const {
        const std::string& pool = isDecoded ? m_decoded : m_bytes;
        return {pool.data() + span.begin, span.end - span.begin};
    }
    void IndexSections() const;
    NameTable& KeysOf(SectionId section) const {
        if (m_sections[section].keyTable == kNone) {
            IndexKeys(section);
        }
        return m_keyTables[m_sections[section].keyTable];
    }
    void IndexKeys(SectionId section) const;
    void IndexKey(NameTable& table, LineId id) const;

    LineId NextOfSameName(LineId line) const {
        return line < m_nextOfSameName.size() ? m_nextOfSameName[line] : kNone;
    }

    bool IsText() const;
    LineId AppendLine(std::string_view bytes, SectionId section);
    void LinkBehind(LineId previous, LineId line);
    void SetLineBytes(LineId id, std::string_view bytes);
    TextSpan ValueBytes(LineId line) const;
    std::string EncodeValue(std::string_view value, bool withInnerMark) const;
    std::optional<std::string> EncodeName(std::string_view name) const;
    std::string EncodeAscii(std::string_view text) const;
    std::string LineEndFor(SectionId section) const;
    std::string LineEndOf(LineId line) const;
    IniEdit ReplaceValue(LineId line, std::string_view value);
    IniEdit InsertKey(SectionId section, std::string_view key, std::string_view value);
    LineId LastKeyOf(SectionId section) const;
    std::optional<SectionId> AddSection(std::string_view name);
    void CompleteLastLine(LineId line, std::string_view lineEnd);
    void AddToIndex(LineId line);
    void RemoveFromIndex(LineId line);
    bool RemoveKeyLine(SectionId section, std::string_view key);

    CodePage m_codePage = 0;
    mutable std::optional<bool> m_isText;
    FileMark m_mark = FileMark::None;
    std::string m_bytes;    // the file's bytes, then those of edited and new lines
    std::string m_tail;     // half a UTF-16 character at the file's end, where it stays
    std::string m_decoded;  // text of the lines that are not text as they stand
    std::vector<IniLine> m_lines;
    std::vector<LineId> m_nextLines;  // by line; empty while the lines stand in their order
    std::vector<Section> m_sections;
    LineId m_firstLine = kNone;
    LineId m_lastLine = kNone;

    // The numbers of sections, from the first look-up on, and for each section those of its lines,
    // from the first look-up of one of its keys on. The keys of a section are nearly always looked
    // up one after the other: its lines and its table are in the processor's nearest cache then.
    mutable NameTable m_sectionTable;
    mutable std::vector<NameTable> m_keyTables;
    // By line; empty while no name is repeated, and shorter where those behind are not.
    mutable std::vector<LineId> m_nextOfSameName;
};

}  // namespace tamarind
