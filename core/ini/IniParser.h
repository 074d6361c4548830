#pragma once

#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

// What may stand around names and values in a file. Other control characters are part of the text.
inline bool IsIniBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v';
}
inline std::string_view TrimIniBlanks(std::string_view text) {
    while (!text.empty() && IsIniBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsIniBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}
// The value in the text of a line, without the blanks around it. `equals` points to the first "="
// of `text`.
inline std::string_view IniValueBehind(const char* equals, std::string_view text) {
    return TrimIniBlanks(text.substr(static_cast<std::size_t>(equals + 1 - text.data())));
}
// Removes the spaces around a name or value that a caller passes. Names in a file also lose tabs.
std::string_view TrimIniSpaces(std::string_view text);
// Removes one pair of equal outer quotes, double or single: "'a'" in double quotes gives 'a'.
std::string_view UnquoteIniValue(std::string_view value);

// Reads lines into a document: at first all of a file, later every edited line again, so that only
// this class decides what a line means. It lives no longer than one such call.
class IniParser {
public:
    explicit IniParser(IniDocument& document) : m_document(document) {}

    // Parses the bytes that the document holds. Its lines must be empty.
    void ParseFile();

    // Sets everything but `lineEndLength` of a line from its bytes. Its place in the section and in
    // the tables is the business of the caller.
    void ParseLine(IniLine& line);

private:
    struct Block;
    struct Scan;
    class LineScanner;

    void ParseByteLines();
    void ParseUtf16Lines();
    // What every line needs is compiled into the loop over them: calls took a fifth of the parsing.

    // Adds a line that begins at byte `offset`.
    [[gnu::always_inline]] inline IniLine& NewLine(std::size_t offset);
    // Reserves memory for the lines that are to be expected after byte `offset`. Kept out of line,
    // because it is rarely called from a hot loop.
    [[gnu::noinline]] void MakeRoom(std::size_t offset);
    // Gives the newest line its place, or joins it to the prose above it.
    [[gnu::always_inline]] inline void LinkLine(IniLine& line);
    // Sets kind and name of a line in a file that is not UTF-16.
    [[gnu::always_inline]] inline void ReadByteLine(IniLine& line, const Scan& scan);
    // Sets the kind and returns the name, a view into `text`; empty at its start for prose.
    // `equals` is the first "=" of the text, or null.
    [[gnu::always_inline]] static inline std::string_view ReadKind(IniLine& line,
                                                                   std::string_view text,
                                                                   const char* equals);
    // For a line whose name, as ReadKind has found it, cannot stay where it is: it is not ASCII and
    // not UTF-8, or very long.
    void DecodeLine(IniLine& line, std::string_view text, const char* equals,
                    std::string_view name);
    void ReadUtf16Line(IniLine& line);
    [[gnu::always_inline]] inline void SetNameHash(IniLine& line);
    std::string DecodeBytes(std::string_view bytes) const;
    void AppendDecoded(IniLine& line, std::string_view name, std::string_view value);

    IniDocument& m_document;
    // `m_lines` and the bytes read when MakeRoom was called last.
    std::size_t m_countedLines = 0;
    std::size_t m_countedBytes = 0;
};

}  // namespace tamarind
