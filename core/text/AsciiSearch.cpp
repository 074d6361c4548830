// Searches 16 places at a time with SSE2, which every 64-bit processor has. A place is a candidate
// if the first and the last character of the needle are there; only candidates are compared as a
// whole. A text that is too short for a block is compared place by place.

#include "core/text/AsciiSearch.h"

#include <algorithm>

#if defined(__SSE2__) || defined(_M_X64)
#define TAMARIND_HAS_SSE2
#include <emmintrin.h>

#include <bit>
#endif

namespace tamarind {
namespace {

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// The bit that differs between the two cases of a letter; 0 for other characters.
char CaseBit(char c) {
    return IsLetter(c) ? 0x20 : 0;
}

bool MatchesAt(const char* text, std::string_view needle) {
    for (std::size_t at = 0; at < needle.size(); ++at) {
        if ((text[at] | CaseBit(needle[at])) != needle[at]) {
            return false;
        }
    }
    return true;
}

#ifdef TAMARIND_HAS_SSE2

constexpr std::size_t kBlock = 16;

__m128i Load(const char* text) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

// Compares one character of the needle with 16 characters of the text at once. All bits of a byte
// of the result are set where they are equal.
class WideCharacter {
public:
    explicit WideCharacter(char c)
        : m_letter(_mm_set1_epi8(c)), m_case(_mm_set1_epi8(CaseBit(c))) {}

    __m128i EqualAt(const char* text) const {
        return _mm_cmpeq_epi8(_mm_or_si128(Load(text), m_case), m_letter);
    }

private:
    __m128i m_letter;
    __m128i m_case;
};

// The first match at or behind `at`, or the number of places; in a text with less than a block of
// them just `at`. Looks for the needle's first and last character at their distance: few places
// have both.
std::size_t PassBlocks(std::string_view text, std::string_view needle, std::size_t at,
                       std::size_t places) {
    if (places < kBlock) {
        return at;
    }
    const std::size_t toLast = needle.size() - 1;
    const WideCharacter first(needle.front());
    const WideCharacter last(needle.back());
    const auto hitsAt = [&](const char* here) {
        return _mm_and_si128(first.EqualAt(here), last.EqualAt(here + toLast));
    };
    while (at < places) {
        // Four blocks without a candidate are skipped together.
        for (; at + 4 * kBlock <= places; at += 4 * kBlock) {
            const char* const here = text.data() + at;
            const __m128i any =
                _mm_or_si128(_mm_or_si128(hitsAt(here), hitsAt(here + kBlock)),
                             _mm_or_si128(hitsAt(here + 2 * kBlock), hitsAt(here + 3 * kBlock)));
            if (_mm_movemask_epi8(any) != 0) {
                break;
            }
        }
        // The last block reaches back to places that were looked at already.
        const std::size_t block = std::min(at, places - kBlock);
        const char* const here = text.data() + block;
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(hitsAt(here))) & (~0U << (at - block));
        for (; hits != 0; hits &= hits - 1) {
            const auto offset = static_cast<std::size_t>(std::countr_zero(hits));
            if (MatchesAt(here + offset, needle)) {
                return block + offset;
            }
        }
        at = block + kBlock;
    }
    return at;
}

// The first byte at or behind `at` that is not ASCII, or the first that no whole block is left for.
std::size_t PassAsciiBlocks(std::string_view text, std::size_t at) {
    for (; at + kBlock <= text.size(); at += kBlock) {
        const auto high = static_cast<unsigned>(_mm_movemask_epi8(Load(text.data() + at)));
        if (high != 0) {
            return at + static_cast<std::size_t>(std::countr_zero(high));
        }
    }
    return at;
}

#else

std::size_t PassBlocks(std::string_view /*text*/, std::string_view /*needle*/, std::size_t at,
                       std::size_t /*places*/) {
    return at;
}

std::size_t PassAsciiBlocks(std::string_view /*text*/, std::size_t at) {
    return at;
}

#endif

}  // namespace

std::size_t FindAsciiIgnoreCase(std::string_view text, std::string_view needle, std::size_t from) {
    if (text.size() < needle.size()) {
        return std::string_view::npos;
    }
    const std::size_t places = text.size() - needle.size() + 1;
    for (std::size_t at = PassBlocks(text, needle, from, places); at < places; ++at) {
        if (MatchesAt(text.data() + at, needle)) {
            return at;
        }
    }
    return std::string_view::npos;
}

std::size_t FindNonAscii(std::string_view text, std::size_t from) {
    for (std::size_t at = PassAsciiBlocks(text, from); at < text.size(); ++at) {
        if (static_cast<unsigned char>(text[at]) >= 0x80) {
            return at;
        }
    }
    return std::string_view::npos;
}

}  // namespace tamarind
