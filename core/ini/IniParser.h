#pragma once

#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

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
// The value of a line's text, between its blanks; `equals` is where its first "=" is.
inline std::string_view IniValueBehind(const char* equals, std::string_view text) {
    return TrimIniBlanks(text.substr(static_cast<std::size_t>(equals + 1 - text.data())));
}
// Callers' names lose spaces only, unlike names in a file, which lose every kind of blank.
std::string_view TrimIniSpaces(std::string_view text);
// Without one pair of equal outer quotes, double or single.
std::string_view UnquoteIniValue(std::string_view value);

// Reads lines into a document: all of a file once, and every edited line again, so that there is
// one place that says what a line means.
class IniParser {
public:
    explicit IniParser(IniDocument& document) : m_document(document) {}

    void ParseFile();

    // Sets kind, name, value and line end of a line from its bytes; a header's name goes into
    // `name` as well.
    void ParseLine(IniLine& line);

private:
    struct Scan;
    class LineScanner;

    void ParseByteLines();
    void ParseUtf16Lines();
    inline IniLine& NewLine(std::size_t offset);
    [[gnu::noinline]] void MakeRoom(std::size_t offset);
    void LinkLine(IniLine& line);
    void ReadByteLine(IniLine& line, const Scan& scan);
    static std::string_view ReadKind(IniLine& line, std::string_view text, const char* equals);
    void ReadNonAsciiLine(IniLine& line, std::string_view text, const char* equals);
    void ReadUtf16Line(IniLine& line);
    void SetNameHash(IniLine& line);
    std::string DecodeBytes(std::string_view bytes) const;
    void AppendDecoded(IniLine& line, std::string_view name, std::string_view value);

    IniDocument& m_document;
    std::size_t m_countedLines = 0;  // when there was room made for lines
    std::size_t m_countedBytes = 0;
};

}  // namespace tamarind
