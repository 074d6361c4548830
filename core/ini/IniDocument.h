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

// What an edit of a document has come to.
enum class IniEdit {
    Unchanged,  // it says so already
    Changed,
    NameNotEncodable,  // the file's encoding lacks a character of the section or key name
    TextNotStorable,   // it would be read as something else: line breaks, NULs, "=" in a key name
    FileNotText,       // lines cannot be added: it is binary, or in an encoding that is not known
};

// Whether the edit was not possible; the document is then as it was.
inline bool IsRefused(IniEdit edit) {
    return edit == IniEdit::NameNotEncodable || edit == IniEdit::TextNotStorable ||
           edit == IniEdit::FileNotText;
}

// An INI file in memory, line by line. What is not edited is written back byte for byte, whatever
// it is.
//
//   file    = [mark] { line }
//   line    = blanks ( "[" name [ "]" anything ] | ";" anything | name "=" value | anything )
//   blanks  = { space | tab | vertical tab }, also around names and values
//
// A line ends with CRLF, LF or CR. Section and key names compare by EqualsIgnoreCase; of two
// sections or keys with one name the first counts. A line ";name=value" is a key of its own with
// the name ";name", so that a key that was commented out can be read and changed.
//
//   [Layout]              section "Layout"
//   ButtonBar = "1"       key "ButtonBar"; Value: 1, QuotedValue: "1"
//   ;DriveBar=0           commented-out key, by the name ";DriveBar"
//   ; a note              prose, as any line without "="
//
// Sections and lines are known by numbers, which hold until DeleteSection or DeleteFileLine; views
// that a document gives out hold until it is edited or destroyed. Look-ups fill tables behind
// `const`, so a document must not be read by two threads at a time. This class knows no paths:
// IniFiles reads, IniTransaction writes.
class IniDocument {
public:
    using SectionId = std::uint32_t;
    using LineId = std::uint32_t;
    static constexpr std::uint32_t kNone = NameTable::kNone;

    // `bytes` holds less than 2 GB. A file without a mark is in `codePage`. Never fails: what is no
    // INI file is prose.
    static IniDocument Parse(std::string bytes, CodePage codePage);

    // The file's bytes with all edits.
    std::string Bytes() const;

    // What edits have made of the bytes that were parsed, in their order: bytes from `begin` to
    // before `end` (in the whole file, its mark included) were replaced by `added`. Ranges begin
    // and end with lines, and do not touch.
    struct Edit {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::string added;
    };
    std::vector<Edit> Edits() const;

    // 2 in UTF-16 files, otherwise 1.
    std::size_t BytesPerUnit() const { return m_mark == FileMark::Utf16Le ? 2 : 1; }

    // Some whole lines of the file, or of what an edit has added, as texts without line ends.
    std::vector<std::string> LinesOf(std::string_view bytes) const;

    // Including deleted lines; several lines of prose in a row count as one.
    std::size_t LineCount() const { return m_lines.size(); }
    std::size_t SectionCount() const { return m_sections.size(); }
    // The name between the brackets, without the blanks around it. Sections have the numbers from 0
    // to SectionCount() - 1, in the order of the file; those of the same name have different
    // numbers.
    std::string_view SectionName(SectionId section) const {
        return KeyName(m_sections[section].header);
    }

    // The first section of that name; spaces around the name are ignored.
    std::optional<SectionId> FindSection(std::string_view name) const;

    // The first line of that key; spaces around the name are ignored. ";name" finds the
    // commented-out key.
    std::optional<LineId> FindKey(SectionId section, std::string_view name) const;

    // The first line of a key and the first of its commented-out form, or kNone. `commented` may be
    // kNone although there is such a line, if there is an active one: nobody needs it then. `hash`
    // is the NameHash of `name`.
    struct KeyLines {
        LineId active = kNone;
        LineId commented = kNone;
    };
    // Both forms, nearly always with one look into the table: the states of all keys are derived
    // from them.
    KeyLines FindKeyForms(SectionId section, std::string_view name, std::uint32_t hash) const;

    struct PlacedKey {
        SectionId section = 0;
        LineId line = 0;
    };
    // The active keys of that name in all sections, in the order of the file, which must not have
    // been edited. Unlike a look-up in each section it makes no tables, of which a file of very
    // many sections would need as many.
    std::vector<PlacedKey> KeysNamed(std::string_view name) const;

    // Gives back the memory that look-ups in a section have taken, if it was the last one in which
    // keys were looked up. The next look-up takes it again: for somebody who reads every section of
    // a large file once.
    void ForgetKeys(SectionId section) const;

    // Equal for names that compare equal, in whatever document, and for a key and its commented-out
    // form. Someone who looks the names of one document up in another can use the stored hash and
    // need not read the names.
    static std::uint32_t NameHash(std::string_view name) { return NameTable::HashOf(name); }
    std::uint32_t NameHash(LineId line) const { return m_lines[line].nameHash; }

    // The value of a key as a reader sees it, that is without one pair of equal outer quotes;
    // nothing if the section or the key is missing.
    std::optional<std::string_view> FindValue(std::string_view section, std::string_view key) const;

    // The lines of a section after its header, in order: FirstLine, NextLine, ... until kNone.
    // Several lines of prose in a row are one.
    LineId FirstLine(SectionId section) const;
    LineId NextLine(LineId line) const {
        do {
            line = LineBehind(line);
        } while (line != kNone && m_lines[line].kind == IniLineKind::Deleted);
        return line != kNone && m_lines[line].kind != IniLineKind::Section ? line : kNone;
    }

    IniLineKind Kind(LineId line) const { return m_lines[line].kind; }
    // Whether an earlier line of the section, to which `line` belongs, has the same name, so that
    // this one does not count.
    bool IsRepeated(SectionId section, LineId line) const;
    // True only if no line of the section is repeated. It is told by the hashes of the names,
    // without the table that IsRepeated makes, and may be false by chance.
    bool AllNamesDiffer(SectionId section) const;
    // The name of a key or of a section header; empty for prose.
    std::string_view KeyName(LineId line) const { return NameIn(m_lines[line]); }
    // The length of the name in UTF-16 units. Most names are ASCII and need not be read for it.
    std::size_t KeyNameUnits(LineId line) const;
    // The value of a key line without blanks and one pair of outer quotes; empty for other lines.
    std::string_view Value(LineId line) const;
    // As Value, but with the outer quotes.
    std::string_view QuotedValue(LineId line) const;
    // All bytes of the file, as long as it has not been edited. A text of ASCII characters in the
    // document stands in them as it is, so that they can be searched at once; empty for UTF-16,
    // where that is not so.
    std::string_view SearchableBytes() const;
    // The line that byte `offset` of SearchableBytes belongs to, and the first byte of a line.
    LineId LineAt(std::size_t offset) const;
    std::size_t OffsetOf(LineId line) const { return m_lines[line].bytes.begin; }

    // The lines of the file that a line stands for: more than one for prose.
    std::vector<std::string> FileLines(LineId line) const { return LinesOf(BytesOf(line)); }

    // The text of a line between its outer blanks, of a key with the blanks around "=" removed. For
    // prose, one text for each of its lines that are not blank.
    std::vector<std::string> LineTexts(LineId line) const;

    // Writes `value` as it is into the first line of the key, so that it is read without its outer
    // blanks and one pair of outer quotes (WriteExactValue keeps them). A new key is inserted after
    // the last key line of the section, a new section at the end of the file. A line that reads as
    // meant already keeps its bytes.
    IniEdit SetValue(std::string_view section, std::string_view key, std::string_view value);

    // Removes the first line of that name. If there is another one, it counts from now on.
    IniEdit DeleteValue(std::string_view section, std::string_view key);

    // Removes every line of that name, so that no older value comes to light.
    IniEdit DeleteKey(std::string_view section, std::string_view key);

    // Turns the first line of an active key into the commented-out key of that name, or the other
    // way round, in its place: only the ";" before the name changes. Unchanged if there is no such
    // line.
    IniEdit ToggleComment(std::string_view section, std::string_view key, bool isCommented);

    // Removes the header and the active keys of the first section of that name. Comments,
    // commented-out keys included, stay and belong to the section above.
    IniEdit DeleteSection(std::string_view section);

    // Removes one line of the file, counted from 1, whatever it is. Unchanged if it is not this
    // text any more. Numbers of lines and sections change.
    IniEdit DeleteFileLine(std::size_t number, std::string_view text);

private:
    friend class IniParser;

    // What is known of a section besides its lines.
    struct Section {
        LineId header = kNone;
        LineId lastKey = kNone;                  // the header if there is none; kNone: not known
        LineId lastLine = kNone;                 // the header if there is none
        mutable std::uint32_t keyTable = kNone;  // among the key tables; none before a look-up
    };

    // Tells NameTable the names and hashes of its numbers.
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

    // Text in the encoding of the file, of which a value may be UTF-8 after a mark of its own.
    std::string Decode(std::string_view bytes) const;
    // The next line of the file, deleted ones included; kNone after the last.
    LineId LineBehind(LineId line) const {
        return !m_nextLines.empty()        ? m_nextLines[line]
               : line + 1 < m_lines.size() ? line + 1
                                           : kNone;
    }
    std::string_view BytesOf(LineId line) const {
        const TextSpan span = m_lines[line].bytes;
        return {m_bytes.data() + span.begin, span.end - span.begin};
    }
    std::string_view NameIn(const IniLine& line) const {
        return line.isDecoded ? DecodedParts(line).name
                              : std::string_view(m_bytes.data() + line.nameBegin, line.nameLength);
    }
    struct LineParts {
        std::string_view name;
        std::string_view value;
    };
    // Of a line whose name is in the decoded copy.
    LineParts DecodedParts(const IniLine& line) const;
    void IndexSections() const;
    // The table of the section's keys, made on the first look-up.
    NameTable& KeysOf(SectionId section) const {
        if (m_sections[section].keyTable == kNone) {
            IndexKeys(section);
        }
        return m_keyTables[m_sections[section].keyTable];
    }
    void IndexKeys(SectionId section) const;
    void IndexKey(NameTable& table, LineId id) const;

    // The next line of the section with the same name, or kNone.
    LineId NextOfSameName(LineId line) const {
        return line < m_nextOfSameName.size() ? m_nextOfSameName[line] : kNone;
    }

    // Whether lines can be added to the file without damage.
    bool IsText() const;
    // Makes a line of `bytes`, which has no place in the file yet.
    LineId AppendLine(std::string_view bytes);
    // Gives a new line of `section` its place in the file after `previous`, or before all others
    // for kNone.
    void LinkBehind(LineId previous, LineId line, SectionId section);
    // Puts the line's new text at the end of `m_bytes` and parses it.
    void SetLineBytes(LineId id, std::string_view bytes);
    TextSpan ValueBytes(LineId line) const;
    // `withInnerMark` keeps a value in the form of UTF-8 with a mark of its own.
    std::string EncodeValue(std::string_view value, bool withInnerMark) const;
    // Nothing if the file's encoding lacks a character of the name.
    std::optional<std::string> EncodeName(std::string_view name) const;
    // ASCII text in the encoding of the file.
    std::string EncodeAscii(std::string_view text) const;
    // The line end for a new line of the section, in the encoding of the file.
    std::string LineEndFor(SectionId section) const;
    std::string LineEndOf(LineId line) const;
    IniEdit ReplaceValue(LineId line, std::string_view value);
    IniEdit InsertKey(SectionId section, std::string_view key, std::string_view value);
    LineId LastKeyOf(SectionId section) const;
    std::optional<SectionId> AddSection(std::string_view name);
    // Gives the line an end if the file's last line lacks it and another is to follow.
    void CompleteLastLine(LineId line, std::string_view lineEnd);
    void AddToIndex(SectionId section, LineId line);
    void RemoveFromIndex(SectionId section, LineId line);
    bool RemoveKeyLine(SectionId section, std::string_view key);

    CodePage m_codePage = 0;
    mutable std::optional<bool> m_isText;
    FileMark m_mark = FileMark::None;
    std::string m_bytes;           // the file's bytes, then those of edited and new lines
    std::size_t m_parsedSize = 0;  // of the file's bytes
    std::string m_tail;            // an odd last byte of UTF-16, written back as it is
    std::string m_decoded;         // names and values of lines that are not UTF-8
    std::vector<IniLine> m_lines;
    std::vector<LineId> m_nextLines;  // by line; empty while the next line is the next number
    std::vector<Section> m_sections;
    LineId m_firstLine = kNone;
    LineId m_lastLine = kNone;

    // Numbers of sections by name, made on the first look-up; and for each section the numbers of
    // its lines by name, made on the first look-up of one of its keys. The keys of a section are
    // nearly always looked up one after the other, when its lines and its table are in the
    // processor's nearest cache.
    mutable NameTable m_sectionTable;
    mutable std::vector<NameTable> m_keyTables;
    // By line. Empty while no name is repeated, and shorter than the lines if the last ones repeat
    // none.
    mutable std::vector<LineId> m_nextOfSameName;
};

}  // namespace tamarind
