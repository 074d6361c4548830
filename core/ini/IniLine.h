#pragma once

#include <cstdint>

namespace tamarind {

enum class IniLineKind : std::uint8_t {
    Prose,         // neither a header nor a key: blank lines, ";text", "text"
    Section,       // [name]
    Key,           // name=value
    CommentedKey,  // ;name=value, a key of its own by the name ";name"
    Deleted,
};

inline bool IsIniKey(IniLineKind kind) {
    return kind == IniLineKind::Key || kind == IniLineKind::CommentedKey;
}

struct TextSpan {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

// One line of a document, or several lines of prose in a row: where its bytes and its name are.
// Where the bytes are text already, the name is a part of them; else it is in the decoded copy,
// with the length of the value in front of it and the value behind it. A large file has many of
// these, and fresh memory costs more than what is done with it.
struct IniLine {
    TextSpan bytes;  // with the line ends
    TextSpan name;   // of a section or a key
    std::uint32_t section = 0;
    std::uint32_t nameHash = 0;  // of a section or a key: IniDocument::NameHash
    IniLineKind kind = IniLineKind::Prose;
    std::uint8_t lineEndLength : 2 = 0;    // characters, of the last line
    bool isAscii : 1 = false;              // its whole text
    bool isDecoded : 1 = false;            // the name is in the decoded copy
    bool hasInnerMark : 1 = false;         // the value is UTF-8 behind a mark of its own
    mutable bool repeatsName : 1 = false;  // an earlier line of the section has the same name
};

}  // namespace tamarind
