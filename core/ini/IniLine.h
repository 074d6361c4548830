#pragma once

#include <cstddef>
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
// name. If the bytes are UTF-8 already, the name is a range of them. Otherwise, or if it is longer
// than its length can say, it is a range of the decoded copy, with the lengths of value and name
// before it and the value after it. Which section a line belongs to follows from its place. The
// struct is small on purpose: a large file has many lines, and for those, fresh memory costs more
// than the parsing.
struct IniLine {
    static constexpr std::size_t kLongestName = 0xFFFF;  // bytes

    TextSpan bytes;                // with the line ends
    std::uint32_t nameBegin = 0;   // of a section or a key
    std::uint32_t nameHash = 0;    // of a section or a key: IniDocument::NameHash
    std::uint16_t nameLength = 0;  // 0 for a name in the decoded copy
    IniLineKind kind = IniLineKind::Prose;
    std::uint8_t lineEndLength : 2 = 0;    // characters, of the last line
    bool isAscii : 1 = false;              // its whole text
    bool isDecoded : 1 = false;            // the name is in the decoded copy
    bool hasInnerMark : 1 = false;         // the value is UTF-8 after a mark of its own
    mutable bool repeatsName : 1 = false;  // an earlier line of the section has the same name
};

}  // namespace tamarind
