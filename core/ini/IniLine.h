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

// A range of bytes, without the one at `end`, in one of the texts of a document.
struct TextSpan {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

// One line of a document, or several lines of prose in a row: the places of its bytes and of its
// name. If the bytes are UTF-8 already, the name is a range of them. Otherwise it is a range of the
// decoded copy, with the length of the value before it and the value after it. The struct is small
// on purpose: a large file has many lines, and for those, fresh memory costs more than the parsing.
struct IniLine {
    TextSpan bytes;  // with the line ends
    TextSpan name;   // of a section or a key
    std::uint32_t section = 0;
    std::uint32_t nameHash = 0;  // of a section or a key: IniDocument::NameHash
    IniLineKind kind = IniLineKind::Prose;
    std::uint8_t lineEndLength : 2 = 0;    // characters, of the last line
    bool isAscii : 1 = false;              // its whole text
    bool isDecoded : 1 = false;            // the name is in the decoded copy
    bool hasInnerMark : 1 = false;         // the value is UTF-8 after a mark of its own
    mutable bool repeatsName : 1 = false;  // an earlier line of the section has the same name
};

}  // namespace tamarind
