#include "core/text/Unicode.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

#include "core/text/RandomSeed.h"

namespace tamarind {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// Maps the code points first, first + stride, ... last by adding `distance`.
struct CaseRow {
    char16_t first;
    char16_t last;
    int distance;
    int stride;
};

constexpr CaseRow kUpperCaseRows[] = {
#include "core/text/UnicodeUpperCase.inc"
};
constexpr CaseRow kLowerCaseRows[] = {
#include "core/text/UnicodeLowerCase.inc"
};

std::string MapText(std::string_view text, char32_t (*map)(char32_t)) {
    std::string mapped;
    mapped.reserve(text.size());
    while (!text.empty()) {
        const CodePoint next = DecodeUtf8(text);
        AppendUtf8(mapped, map(next.value));
        text.remove_prefix(next.length);
    }
    return mapped;
}

// `rows` are sorted. Code points in none of them stay as they are.
char32_t MapCase(std::span<const CaseRow> rows, char32_t codePoint) {
    const auto row = std::ranges::lower_bound(rows, codePoint, {}, &CaseRow::last);
    if (row == rows.end() || codePoint < row->first) {
        return codePoint;
    }
    const int offset = static_cast<int>(codePoint) - row->first;
    return offset % row->stride == 0
               ? static_cast<char32_t>(static_cast<int>(codePoint) + row->distance)
               : codePoint;
}

// The hashes that are stored or used between processes depend on the byte order.
static_assert(std::endian::native == std::endian::little);

std::uint64_t Load8(const char* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

std::uint64_t Byte(const char* at) {
    return static_cast<unsigned char>(*at);
}

std::uint64_t Load4(const char* bytes) {
    std::uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

// The last bytes of a text, up to eight, as one word; at least those that do not fill a word of
// eight. Of a longer text some are read twice, which is faster than reading the rest byte by byte.
std::uint64_t LoadEnd(std::string_view text) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    if (text.size() >= 8) {
        return Load8(end - 8);
    }
    if (text.size() >= 4) {
        return Load4(begin) | (Load4(end - 4) << 32);
    }
    if (text.empty()) {
        return 0;
    }
    return Byte(begin) | (Byte(begin + text.size() / 2) << 8) | (Byte(end - 1) << 16);
}

// Upper-cases the ASCII letters among eight bytes at once; other bytes stay.
std::uint64_t FoldAscii8(std::uint64_t word) {
    const std::uint64_t low7 = word & ~kHighBits;
    // The high bit of each byte of a sum says whether the byte was at least "a", or beyond "z".
    const std::uint64_t atLeastA = low7 + 0x1F1F1F1F1F1F1F1FU;
    const std::uint64_t beyondZ = low7 + 0x0505050505050505U;
    const std::uint64_t isLower = (atLeastA ^ beyondZ) & kHighBits & ~word;
    return word - (isLower >> 2);
}

// One step of a hash: multiplication by 2^64 divided by the golden ratio, then a shift that brings
// high bits down.
std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 29);
}

// Takes words of eight bytes. Its results must never change: they are stored and known to other
// versions of the program.
class StableHash {
public:
    explicit StableHash(std::size_t size) : m_hash(0xCBF29CE484222325U ^ size) {}
    void Take(std::uint64_t word) { m_hash = Mix(m_hash, word); }
    std::uint64_t Result() const { return m_hash; }

private:
    std::uint64_t m_hash;
};

// The keys that a TableHash uses, one for each word of a text. Those beyond the first 16 words are
// computed each time.
struct TableKeys {
    static constexpr std::size_t kKept = 16;
    explicit TableKeys(std::uint64_t newSeed) : seed(newSeed), ofSize(OfWord(~std::size_t{0})) {
        for (std::size_t i = 0; i < kKept; ++i) {
            ofWords[i] = OfWord(i);
        }
    }
    std::uint64_t OfWord(std::size_t number) const { return Mix(0, Mix(seed, Mix(seed, number))); }

    std::uint64_t seed;
    std::uint64_t ofSize;
    std::uint64_t ofWords[kKept];
};

// Made on the first call, for the life of the process.
TableKeys& ProcessKeys() {
    static TableKeys keys(RandomSeed());
    return keys;
}

// A hash of the NH family: each word meets a key of its own, in a product of its two halves. As
// long as the keys are secret, no pair of texts has the same sum more often than any other, so
// nobody can choose names that collide. A chain of Mix would not do: some differences of texts
// cancel out with half of all seeds.
class TableHash {
public:
    explicit TableHash(std::size_t size) : m_keys(ProcessKeys()), m_sum(size * m_keys.ofSize) {}
    void Take(std::uint64_t word) { Add(word, m_keys.ofWords[m_words++]); }
    // Every bit depends on every bit of the sum.
    std::uint64_t Result() const { return Mix(0, Mix(m_sum >> 32, m_sum)) >> 32; }

protected:
    void Add(std::uint64_t word, std::uint64_t key) {
        const auto low = static_cast<std::uint32_t>(word) + static_cast<std::uint32_t>(key);
        const auto high =
            static_cast<std::uint32_t>(word >> 32) + static_cast<std::uint32_t>(key >> 32);
        m_sum += std::uint64_t{low} * high;
    }

    const TableKeys& m_keys;
    std::uint64_t m_sum;
    std::size_t m_words = 0;
};

// The same for texts that have more words than there are stored keys.
class LongTableHash : public TableHash {
public:
    using TableHash::TableHash;
    void Take(std::uint64_t word) { Add(word, m_keys.OfWord(m_words++)); }
};

// Hashes the text as if in upper case. ASCII letters are folded on the fly. Another text that is
// not in upper case yet is converted first, and `again` is called for the result.
template <typename Hash, typename Again>
std::uint64_t HashFolded(std::string_view text, const Again& again) {
    const char* bytes = text.data();
    std::size_t left = text.size();
    std::uint64_t nonAscii = 0;
    Hash hash(text.size());
    for (; left > 8; left -= 8, bytes += 8) {
        const std::uint64_t word = Load8(bytes);
        nonAscii |= word;
        hash.Take(FoldAscii8(word));
    }
    const std::uint64_t last = LoadEnd(text);
    nonAscii |= last;
    if ((nonAscii & kHighBits) != 0) {
        const std::string upper = ToUpperCase(text);
        if (upper != text) {
            return again(upper);
        }
    }
    hash.Take(FoldAscii8(last));
    return hash.Result();
}

}  // namespace

CodePoint DecodeUtf8(std::string_view text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byteAt(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {kReplacement, 1};
    }
    char32_t value = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) {
            return {kReplacement, 1};
        }
        value = (value << 6) | (byteAt(i) & 0x3FU);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < kSmallest[length] || value > 0x10FFFF || isSurrogate) {
        return {kReplacement, 1};
    }
    return {value, length};
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = kReplacement;
    }
    const auto continuation = [&](int shift) {
        text += static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F));
    };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | (codePoint >> 6));
        continuation(0);
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xE0 | (codePoint >> 12));
        continuation(6);
        continuation(0);
    } else {
        text += static_cast<char>(0xF0 | (codePoint >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

std::u16string Utf16FromUtf8(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const CodePoint next = DecodeUtf8(text);
        text.remove_prefix(next.length);
        if (next.value < 0x10000) {
            units += static_cast<char16_t>(next.value);
        } else {
            units += static_cast<char16_t>(0xD7C0 + (next.value >> 10));
            units += static_cast<char16_t>(0xDC00 + (next.value & 0x3FF));
        }
    }
    return units;
}

std::string Utf8FromUtf16(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t value = units[i];
        const bool isHigh = value >= 0xD800 && value <= 0xDBFF;
        if (isHigh && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
            value = 0x10000 + ((value - 0xD800) << 10) + (units[++i] - 0xDC00U);
        }
        AppendUtf8(text, value);
    }
    return text;
}

bool IsAscii(std::string_view text) {
    const char* bytes = text.data();
    std::size_t left = text.size();
    for (; left >= 8; left -= 8, bytes += 8) {
        if ((Load8(bytes) & kHighBits) != 0) {
            return false;
        }
    }
    return (LoadEnd(text) & kHighBits) == 0;
}

bool IsValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const CodePoint next = DecodeUtf8(text);
        if (next.length == 1 && next.value == kReplacement) {
            return false;
        }
        text.remove_prefix(next.length);
    }
    return true;
}

std::size_t Utf16Length(std::string_view text) {
    if (IsAscii(text)) {
        return text.size();
    }
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        units += byte >= 0xF0 ? 2U : (byte & 0xC0U) != 0x80 ? 1U : 0U;
    }
    return units;
}

std::string_view CutToUtf16Units(std::string_view text, std::size_t maxUnits) {
    // A text never has more units than bytes, which settles nearly every call.
    if (text.size() <= maxUnits) {
        return text;
    }
    std::size_t used = 0;
    std::size_t units = 0;
    while (used < text.size()) {
        const CodePoint next = DecodeUtf8(text.substr(used));
        units += next.value >= 0x10000 ? 2 : 1;
        if (units > maxUnits) {
            break;
        }
        used += next.length;
    }
    return text.substr(0, used);
}

char32_t SimpleUpperCase(char32_t codePoint) {
    if (codePoint < 0x80) {
        return codePoint >= 'a' && codePoint <= 'z' ? codePoint - 0x20 : codePoint;
    }
    return MapCase(kUpperCaseRows, codePoint);
}

char32_t SimpleLowerCase(char32_t codePoint) {
    if (codePoint < 0x80) {
        return codePoint >= 'A' && codePoint <= 'Z' ? codePoint + 0x20 : codePoint;
    }
    return MapCase(kLowerCaseRows, codePoint);
}

bool EqualsIgnoreCase(std::string_view left, std::string_view right) {
    if (left.size() == right.size()) {
        const char* a = left.data();
        const char* b = right.data();
        std::size_t count = left.size();
        std::uint64_t nonAscii = 0;
        std::uint64_t difference = 0;
        for (; count > 8; count -= 8, a += 8, b += 8) {
            const std::uint64_t wordA = Load8(a);
            const std::uint64_t wordB = Load8(b);
            nonAscii |= wordA | wordB;
            difference |= FoldAscii8(wordA) ^ FoldAscii8(wordB);
        }
        const std::uint64_t endA = LoadEnd(left);
        const std::uint64_t endB = LoadEnd(right);
        nonAscii |= endA | endB;
        difference |= FoldAscii8(endA) ^ FoldAscii8(endB);
        if (difference == 0) {
            return true;
        }
        if ((nonAscii & kHighBits) == 0) {
            return false;
        }
    }
    while (!left.empty() && !right.empty()) {
        const CodePoint a = DecodeUtf8(left);
        const CodePoint b = DecodeUtf8(right);
        if (SimpleUpperCase(a.value) != SimpleUpperCase(b.value)) {
            return false;
        }
        left.remove_prefix(a.length);
        right.remove_prefix(b.length);
    }
    return left.empty() && right.empty();
}

std::string ToUpperCase(std::string_view text) {
    return MapText(text, SimpleUpperCase);
}

std::string ToLowerCase(std::string_view text) {
    return MapText(text, SimpleLowerCase);
}

std::uint64_t HashIgnoreCase(std::string_view text) {
    return HashFolded<StableHash>(text, HashIgnoreCase);
}

std::uint32_t TableHashIgnoreCase(std::string_view text) {
    const bool isShort = text.size() <= 8 * TableKeys::kKept;
    return static_cast<std::uint32_t>(isShort
                                          ? HashFolded<TableHash>(text, TableHashIgnoreCase)
                                          : HashFolded<LongTableHash>(text, TableHashIgnoreCase));
}

void SetTableHashSeed(std::uint64_t seed) {
    ProcessKeys() = TableKeys(seed);
}

std::uint64_t HashBytes(std::string_view bytes) {
    std::uint64_t hash = Mix(0xCBF29CE484222325U, bytes.size());
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        hash = Mix(hash, Mix(0, Load8(bytes.data())));
    }
    std::uint64_t rest = 0;
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(&rest));
    return Mix(hash, Mix(0, rest));
}

}  // namespace tamarind
