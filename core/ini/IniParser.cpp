// A file is read in one pass. LineScanner looks at 64 bytes at a time and turns them into three bit
// masks: line ends, equals signs and bytes beyond ASCII. The end of a line, its first "=" and
// whether it needs decoding are then found by counting bits instead of looking at every byte. Most
// lines are ASCII or UTF-8: for these nothing is copied, and the line just notes where its name is.

#include "core/ini/IniParser.h"

#include <algorithm>
#include <bit>
#include <iterator>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::uint32_t Offset(std::size_t value) {
    return static_cast<std::uint32_t>(value);
}

// The name in the header `text`, which begins after the "[". A missing "]" is no error.
std::string_view SectionNameIn(std::string_view text) {
    return TrimIniBlanks(text.substr(0, text.find(']')));
}

}  // namespace

std::string_view TrimIniSpaces(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view UnquoteIniValue(std::string_view value) {
    const bool isQuoted = value.size() > 1 && value.front() == value.back() &&
                          (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

// What is where among 64 bytes: bit i of each mask stands for byte i.
struct IniParser::Block {
    static constexpr std::size_t kSize = 64;
    std::uint64_t lineEnds = 0;
    std::uint64_t equals = 0;
    std::uint64_t nonAscii = 0;

    explicit Block(const char* bytes) {
#if defined(__SSE2__)
        const auto bitsOf = [](__m128i mask) {
            return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(mask))};
        };
        const __m128i carriageReturn = _mm_set1_epi8('\r');
        const __m128i lineFeed = _mm_set1_epi8('\n');
        const __m128i equalsSign = _mm_set1_epi8('=');
#pragma GCC unroll 4
        for (unsigned i = 0; i < kSize; i += 16) {
            const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
            const __m128i isEnd =
                _mm_or_si128(_mm_cmpeq_epi8(part, carriageReturn), _mm_cmpeq_epi8(part, lineFeed));
            lineEnds |= bitsOf(isEnd) << i;
            equals |= bitsOf(_mm_cmpeq_epi8(part, equalsSign)) << i;
            nonAscii |= bitsOf(part) << i;
        }
#else
        for (unsigned i = 0; i < kSize; ++i) {
            const char c = bytes[i];
            lineEnds |= std::uint64_t{c == '\r' || c == '\n'} << i;
            equals |= std::uint64_t{c == '='} << i;
            nonAscii |= std::uint64_t{static_cast<unsigned char>(c) >= 0x80} << i;
        }
#endif
    }
};

// What a scan of one line finds: its end, its first "=" (null if none) and whether it is all ASCII.
struct IniParser::Scan {
    const char* end = nullptr;
    const char* equals = nullptr;
    bool isAscii = true;
};

// Scans one line after the other; every byte is looked at once.
class IniParser::LineScanner {
public:
    LineScanner(const char* from, const char* limit)
        : m_at(from), m_limit(limit), m_block(Load(from)) {}

    // The line that begins at `from`, which must not lie before the line that was asked for last.
    Scan ScanLine(const char* from) {
        Scan scan;
        for (;;) {
            const auto skipped = static_cast<std::size_t>(from - m_at);
            if (skipped >= Block::kSize) {
                m_at += Block::kSize;
                m_block = Load(m_at);
                continue;
            }
            const std::uint64_t ahead = ~std::uint64_t{0} << skipped;
            const std::uint64_t ends = m_block.lineEnds & ahead;
            // All bits below the first line end, or all bits if there is none.
            const std::uint64_t line = (ends - 1) & ~ends & ahead;
            scan.isAscii = scan.isAscii && (m_block.nonAscii & line) == 0;
            if (scan.equals == nullptr && (m_block.equals & line) != 0) {
                scan.equals = m_at + std::countr_zero(m_block.equals & line);
            }
            if (ends != 0) {
                scan.end = m_at + std::countr_zero(ends);
                return scan;
            }
            from = m_at + Block::kSize;
        }
    }

private:
    // The last block is filled up with line ends, so that the last line always has one.
    Block Load(const char* at) const {
        const auto left = static_cast<std::size_t>(m_limit - at);
        if (left >= Block::kSize) {
            return Block(at);
        }
        char bytes[Block::kSize];
        std::fill(std::copy(at, m_limit, bytes), std::end(bytes), '\n');
        return Block(bytes);
    }

    const char* m_at;  // where the block begins
    const char* m_limit;
    Block m_block;
};

void IniParser::ParseFile() {
    IniDocument& document = m_document;
    document.m_mark = FindFileMark(document.m_bytes);
    document.m_lines.reserve(document.m_bytes.size() / 24 + 1);
    if (document.m_mark == FileMark::Utf16Le) {
        const std::size_t even = document.m_bytes.size() & ~std::size_t{1};
        document.m_tail = document.m_bytes.substr(even);
        document.m_bytes.resize(even);
        ParseUtf16Lines();
    } else {
        ParseByteLines();
    }
    if (!document.m_lines.empty()) {
        document.m_firstLine = 0;
        document.m_lastLine = Offset(document.m_lines.size() - 1);
    }
}

inline IniLine& IniParser::NewLine(std::size_t offset) {
    std::vector<IniLine>& lines = m_document.m_lines;
    if (lines.size() == lines.capacity()) {
        MakeRoom(offset);
    }
    IniLine& line = lines.emplace_back();
    line.bytes.begin = Offset(offset);
    return line;
}

void IniParser::ParseByteLines() {
    const std::string& bytes = m_document.m_bytes;
    const char* const start = bytes.data();
    const char* const limit = start + bytes.size();
    const char* at = start + MarkBytes(m_document.m_mark).size();
    LineScanner scanner(at, limit);
    while (at < limit) {
        const Scan scan = scanner.ScanLine(at);
        IniLine& line = NewLine(static_cast<std::size_t>(at - start));
        at = scan.end;
        if (at < limit) {
            line.lineEndLength = at[0] == '\r' && at + 1 < limit && at[1] == '\n' ? 2 : 1;
            at += line.lineEndLength;
        }
        line.bytes.end = Offset(static_cast<std::size_t>(at - start));
        ReadByteLine(line, scan);
        LinkLine(line);
    }
}

void IniParser::ParseUtf16Lines() {
    const std::string& bytes = m_document.m_bytes;
    const auto unitAt = [&](std::size_t i) {
        return static_cast<unsigned char>(bytes[i]) |
               (static_cast<unsigned char>(bytes[i + 1]) << 8);
    };
    std::size_t at = kUtf16LeMarkBytes.size();
    while (at < bytes.size()) {
        IniLine& line = NewLine(at);
        for (; at < bytes.size(); at += 2) {
            const int unit = unitAt(at);
            if (unit == '\r' || unit == '\n') {
                const bool isPair = unit == '\r' && at + 3 < bytes.size() && unitAt(at + 2) == '\n';
                line.lineEndLength = isPair ? 2 : 1;
                break;
            }
        }
        at += std::size_t{2} * line.lineEndLength;
        line.bytes.end = Offset(at);
        ReadUtf16Line(line);
        LinkLine(line);
    }
}

// Expects as many lines per byte as since the last call. The lines of a file of short lines take
// many times the size of the file, and doubling their memory each time would take twice that.
void IniParser::MakeRoom(std::size_t offset) {
    std::vector<IniLine>& lines = m_document.m_lines;
    const std::size_t left = m_document.m_bytes.size() - offset;
    const double linesPerByte = static_cast<double>(lines.size() - m_countedLines) /
                                static_cast<double>(offset - m_countedBytes);
    const auto expected = static_cast<std::size_t>(1.02 * linesPerByte * static_cast<double>(left));
    lines.reserve(lines.size() + std::min(left, std::max(expected, lines.size() / 4)) + 1);
    m_countedLines = lines.size();
    m_countedBytes = offset;
}

// Gives the last line its place in the file and in its section. Several lines of prose in a row
// become one, to save memory. The first line of the file stays alone, because new lines may have to
// end as it does.
inline void IniParser::LinkLine(IniLine& line) {
    IniDocument& document = m_document;
    if (line.kind == IniLineKind::Prose && document.m_lines.size() > 2) {
        IniLine& previous = document.m_lines.end()[-2];
        if (previous.kind == IniLineKind::Prose) {
            previous.bytes.end = line.bytes.end;
            previous.lineEndLength = line.lineEndLength;
            document.m_lines.pop_back();
            return;
        }
    }
    const std::uint32_t id = Offset(document.m_lines.size()) - 1;
    if (line.kind == IniLineKind::Section) {
        document.m_sections.push_back({.header = id, .lastKey = id, .lastLine = id});
    }
    if (!document.m_sections.empty()) {
        IniDocument::Section& section = document.m_sections.back();
        section.lastLine = id;
        if (line.kind == IniLineKind::Key) {
            section.lastKey = id;
        }
    }
}

void IniParser::ParseLine(IniLine& line) {
    if (m_document.m_mark == FileMark::Utf16Le) {
        ReadUtf16Line(line);
        return;
    }
    const char* const start = m_document.m_bytes.data() + line.bytes.begin;
    LineScanner scanner(start, m_document.m_bytes.data() + line.bytes.end);
    ReadByteLine(line, scanner.ScanLine(start));
}

inline void IniParser::ReadByteLine(IniLine& line, const Scan& scan) {
    const char* const start = m_document.m_bytes.data() + line.bytes.begin;
    const std::string_view text(start, static_cast<std::size_t>(scan.end - start));
    line.isAscii = scan.isAscii;
    line.isDecoded = false;
    line.hasInnerMark = false;
    const bool isText = scan.isAscii || (m_document.m_mark == FileMark::Utf8 && IsValidUtf8(text));
    const std::string_view name = ReadKind(line, text, scan.equals);
    if (isText && name.size() <= IniLine::kLongestName) {
        line.nameBegin = line.bytes.begin + Offset(static_cast<std::size_t>(name.data() - start));
        line.nameLength = static_cast<std::uint16_t>(name.size());
    } else {
        DecodeLine(line, text, scan.equals, name);
    }
    SetNameHash(line);
}

// Gives the line's name, at its start without one.
inline std::string_view IniParser::ReadKind(IniLine& line, std::string_view text,
                                            const char* equals) {
    const std::string_view trimmed = TrimIniBlanks(text);
    const std::string_view none = text.substr(0, 0);
    line.kind = IniLineKind::Prose;
    if (trimmed.empty()) {
        return none;
    }
    if (trimmed.front() == '[') {
        line.kind = IniLineKind::Section;
        return SectionNameIn(trimmed.substr(1));
    }
    if (equals == nullptr) {
        return none;
    }
    line.kind = trimmed.front() == ';' ? IniLineKind::CommentedKey : IniLineKind::Key;
    return TrimIniBlanks(trimmed.substr(0, static_cast<std::size_t>(equals - trimmed.data())));
}

// The bytes that give a line its form ("=", ";", blanks, quotes) never occur as the second byte of
// a character in a double-byte code page, so the line is taken apart first and its parts are
// decoded. The exception is "]", which can be such a byte: a header is decoded before its "]" is
// looked for.
void IniParser::DecodeLine(IniLine& line, std::string_view text, const char* equals,
                           std::string_view name) {
    if (line.kind == IniLineKind::Section) {
        const std::string decoded = DecodeBytes(text.substr(text.find('[') + 1));
        AppendDecoded(line, SectionNameIn(decoded), {});
    } else if (IsIniKey(line.kind)) {
        const std::string_view value = IniValueBehind(equals, text);
        std::string_view inner = UnquoteIniValue(value);
        line.hasInnerMark =
            m_document.m_mark == FileMark::None && FindFileMark(inner) == FileMark::Utf8;
        if (line.hasInnerMark) {
            inner.remove_prefix(kUtf8MarkBytes.size());
        }
        AppendDecoded(
            line, DecodeBytes(name),
            line.hasInnerMark ? DecodeCodePage(inner, kCodePageUtf8) : DecodeBytes(value));
    }
}

void IniParser::ReadUtf16Line(IniLine& line) {
    line.isAscii = false;  // not known
    line.isDecoded = false;
    line.hasInnerMark = false;
    const std::size_t count =
        line.bytes.end - line.bytes.begin - std::size_t{2} * line.lineEndLength;
    const std::string text =
        DecodeUtf16Le(std::string_view(m_document.m_bytes).substr(line.bytes.begin, count));
    const std::size_t at = text.find('=');
    const char* const equals = at == std::string::npos ? nullptr : text.data() + at;
    const std::string_view name = ReadKind(line, text, equals);
    if (line.kind != IniLineKind::Prose) {
        AppendDecoded(line, name,
                      IsIniKey(line.kind) ? IniValueBehind(equals, text) : std::string_view());
    }
    SetNameHash(line);
}

// Done here, while the name is still in the processor's cache.
inline void IniParser::SetNameHash(IniLine& line) {
    if (IsIniKey(line.kind) || line.kind == IniLineKind::Section) {
        line.nameHash = IniDocument::NameHash(m_document.NameIn(line));
    }
}

std::string IniParser::DecodeBytes(std::string_view bytes) const {
    const bool isUtf8 = m_document.m_mark == FileMark::Utf8;
    return DecodeCodePage(bytes, isUtf8 ? kCodePageUtf8 : m_document.m_codePage);
}

// Layout in the pool: lengths of name and value (4 bytes each), name, value. The lengths are copied
// because the place is not aligned.
void IniParser::AppendDecoded(IniLine& line, std::string_view name, std::string_view value) {
    std::string& pool = m_document.m_decoded;
    const std::uint32_t lengths[] = {Offset(name.size()), Offset(value.size())};
    pool.append(reinterpret_cast<const char*>(lengths), sizeof lengths);
    line.isDecoded = true;
    line.nameBegin = Offset(pool.size());
    line.nameLength = 0;
    pool.append(name).append(value);
}

}  // namespace tamarind
