#include "core/text/Folding.h"

#include <algorithm>

#include "core/text/Unicode.h"

namespace tamarind {
namespace {

// The letters without their accents of the characters from U+00C0 and from U+1E00 on: the first
// characters of their canonical decompositions (Unicode Character Database), and what is left of
// letters with a stroke. "-" stands for a character that stays as it is.
constexpr char32_t kLatin = 0xC0;
constexpr std::string_view kLatinBases =
    "aaaaaa-ceeeeiiiidnooooo-ouuuuy--aaaaaa-ceeeeiiiidnooooo-ouuuuy-y"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii--jjkk-lllllll"
    "lllnnnnnn---oooooo--rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzz-";
constexpr char32_t kMoreLatin = 0x1E00;
constexpr std::string_view kMoreLatinBases =
    "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmm"
    "mmmmnnnnnnnnoooooooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvv"
    "wwwwwwwwwwxxxxyyzzzzzzhtwy------aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
    "eeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy------";

// Other lower-case characters that become one or two others, in their order.
struct Replacement {
    char32_t from = 0;
    char32_t to = 0;
    char32_t second = 0;
};
constexpr Replacement kReplacements[] = {
    {0x00DF, 's', 's'},                                        // sharp s
    {0x00E6, 'a', 'e'}, {0x0153, 'o', 'e'}, {0x0390, 0x03B9},  // Greek
    {0x03AC, 0x03B1},   {0x03AD, 0x03B5},   {0x03AE, 0x03B7}, {0x03AF, 0x03B9},
    {0x03B0, 0x03C5},   {0x03C2, 0x03C3},   {0x03CA, 0x03B9}, {0x03CB, 0x03C5},
    {0x03CC, 0x03BF},   {0x03CD, 0x03C5},   {0x03CE, 0x03C9}, {0x0439, 0x0438},  // Cyrillic
    {0x0450, 0x0435},   {0x0451, 0x0435},   {0x0457, 0x0456},
};

// Accents that follow their letter, points of Hebrew and vowel signs of Arabic.
bool IsMark(char32_t c) {
    return (c >= 0x300 && c <= 0x36F) || (c >= 0x591 && c <= 0x5C7 && c != 0x5BE && c != 0x5C0) ||
           (c >= 0x64B && c <= 0x65F);
}

char BaseIn(std::string_view bases, char32_t first, char32_t c) {
    const char base = c >= first && c - first < bases.size() ? bases[c - first] : '-';
    return base == '-' ? '\0' : base;
}

char FoldedAscii(char c) {
    return c >= 'A' && c <= 'Z'                                 ? static_cast<char>(c + ('a' - 'A'))
           : static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? ' '
                                                                : c;
}

void AppendCharacter(std::string& text, char32_t c) {
    if (IsMark(c)) {
        return;
    }
    // Characters with one upper case have one lower case after it, too.
    const char32_t lower = SimpleLowerCase(SimpleUpperCase(c));
    const char latin = BaseIn(kLatinBases, kLatin, lower);
    const char base = latin != '\0' ? latin : BaseIn(kMoreLatinBases, kMoreLatin, lower);
    if (base != '\0' || lower < 0x80) {
        text += base != '\0' ? base : FoldedAscii(static_cast<char>(lower));
        return;
    }
    const auto* const found =
        std::ranges::lower_bound(kReplacements, lower, {}, &Replacement::from);
    const bool isReplaced = found != std::end(kReplacements) && found->from == lower;
    AppendUtf8(text, isReplaced ? found->to : lower);
    if (isReplaced && found->second != 0) {
        AppendUtf8(text, found->second);
    }
}

// Calls `done` with the number of bytes of the original that each step has taken.
template <typename Done>
void Fold(std::string_view text, std::string& folded, Done done) {
    while (!text.empty()) {
        std::size_t length = 1;
        if (static_cast<unsigned char>(text.front()) < 0x80) {
            folded += FoldedAscii(text.front());
        } else {
            const CodePoint point = DecodeUtf8(text);
            length = point.length;
            AppendCharacter(folded, point.value);
        }
        done(length);
        text.remove_prefix(length);
    }
}

}  // namespace

std::string Folded(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    AppendFolded(folded, text);
    return folded;
}

void AppendFolded(std::string& folded, std::string_view text) {
    Fold(text, folded, [](std::size_t) {});
}

FoldedText FoldedWithUnits(std::string_view text) {
    FoldedText folded;
    std::uint32_t unit = 0;
    Fold(text, folded.text, [&](std::size_t length) {
        folded.units.resize(folded.text.size(), unit);
        unit += length == 4 ? 2 : 1;  // beyond the BMP: a surrogate pair
    });
    folded.units.push_back(unit);
    return folded;
}

}  // namespace tamarind
