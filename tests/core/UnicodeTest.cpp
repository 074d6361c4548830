#include "core/text/Unicode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/text/RandomSeed.h"
#include "core/text/TextEncoding.h"

namespace tamarind {
namespace {

std::string Utf8Of(char32_t codePoint) {
    std::string text;
    AppendUtf8(text, codePoint);
    return text;
}

TEST(Unicode, NamesThatAreEqualHaveEqualHashes) {
    int pairs = 0;
    for (char32_t c = 1; c < 0x11000; ++c) {
        const char32_t upper = SimpleUpperCase(c);
        ASSERT_EQ(SimpleUpperCase(upper), upper) << std::hex << static_cast<unsigned>(c);
        ASSERT_TRUE(c < 0x10000 || upper == c);
        const bool isHalf = c >= 0xD800 && c < 0xE000;
        ASSERT_EQ(DecodeUtf8(Utf8Of(c)).value, isHalf ? 0xFFFD : c);
        pairs += upper == c ? 0 : 1;
        for (const std::string prefix : {"", "seven77", "eight888"}) {
            const std::string left = prefix + Utf8Of(c) + "x";
            const std::string right = prefix + Utf8Of(upper) + "X";
            ASSERT_TRUE(EqualsIgnoreCase(left, right)) << left;
            ASSERT_EQ(HashIgnoreCase(left), HashIgnoreCase(right)) << left;
            ASSERT_EQ(TableHashIgnoreCase(left), TableHashIgnoreCase(right)) << left;
        }
    }
    EXPECT_GT(pairs, 900);
    EXPECT_TRUE(EqualsIgnoreCase("Straße_ÿÄжǆ", "STRAßE_ŸäЖǄ"));
    for (const auto& [left, right] : {std::pair("ß", "SS"),
                                      {"[", "{"},
                                      {"@", "`"},
                                      {"ab", "abc"},
                                      {"\xC3\x84", "\xC3"},
                                      {"ä", "a"}}) {
        EXPECT_FALSE(EqualsIgnoreCase(left, right)) << left;
    }
}

TEST(Unicode, EveryByteOfATextCounts) {
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string text(size, 'a');
        EXPECT_TRUE(IsAscii(text));
        for (std::size_t at = 0; at < size; ++at) {
            std::string other = text;
            other[at] = '\xC3';
            EXPECT_FALSE(IsAscii(other)) << size << ' ' << at;
            other[at] = 'b';
            EXPECT_FALSE(EqualsIgnoreCase(text, other)) << size << ' ' << at;
        }
    }
    // All mappings at once.
    std::string upper;
    for (char32_t c = 1; c < 0x10000; ++c) {
        AppendUtf8(upper, SimpleUpperCase(c));
    }
    EXPECT_EQ(HashBytes(upper), 15222155732971743629U);
}

// Other copies of the program know locks and files by these hashes: older and newer ones, too.
TEST(Unicode, HashesThatLeaveTheProcessStayTheSame) {
    EXPECT_EQ(HashIgnoreCase("C:\\Total Commander\\wincmd.ini"), 0x3FB5719BFF857918U);
    EXPECT_EQ(HashIgnoreCase("D:\\Ä\\я.ini"), 0xBFB82F6DDB7F6022U);
    EXPECT_EQ(HashBytes("[Configuration]\r\nx=1\xFF\r\n"), 0xEAD75806A40CDEFEU);
}

// Texts that collide with one seed do not with the next, nor do long ones of the same words.
TEST(Unicode, HashesOfTablesDependOnSeedAndOrder) {
    SetTableHashSeed(1);
    std::vector<std::string> texts(1);
    for (int word = 1000; word < 1024; ++word) {
        texts[0] += "word" + std::to_string(word);
    }
    for (std::size_t at = 8; at < texts[0].size(); at += 8) {
        texts.push_back(texts[0]);
        std::swap_ranges(&texts.back()[at - 8], &texts.back()[at], &texts.back()[at]);
    }
    for (int i = 0; texts.size() < 100; ++i) {
        if (TableHashIgnoreCase(std::to_string(i)) % 4096 == 0) {
            texts.push_back(std::to_string(i));
        }
    }
    SetTableHashSeed(2);
    std::set<std::uint32_t> hashes;
    for (const std::string& text : texts) {
        hashes.insert(TableHashIgnoreCase(text) % 65536);
    }
    EXPECT_EQ(hashes.size(), texts.size());
    SetTableHashSeed(RandomSeed());
}

TEST(Unicode, MalformedTextBecomesReplacementCharacters) {
    const std::tuple<std::string_view, std::size_t> cases[] = {
        {"\x80", 1},     {"\xC3", 1},         {"\xC0\xAF", 2},
        {"\xE4\xB8", 2}, {"\xED\xA0\x80", 3}, {"\xF4\x90\x80\x80", 4},
        {"\xF8", 1},     {"\xC3\xC3", 2},     {"\xE0\x80\xAF", 3},
    };
    for (const auto& [bytes, replaced] : cases) {
        EXPECT_FALSE(IsValidUtf8(bytes));
        EXPECT_EQ(Utf16FromUtf8(bytes), std::u16string(replaced, u'\uFFFD'));
        EXPECT_TRUE(IsValidUtf8(DecodeCodePage(bytes, kCodePageUtf8)));
    }
    EXPECT_EQ(Utf16FromUtf8("\xC3\xC3\xA4"), u"\uFFFD\u00E4");
    EXPECT_EQ(Utf8FromUtf16({u"\xDC00\xD83D\xDE00\xD83D", 4}), "\uFFFD\U0001F600\uFFFD");
    EXPECT_EQ(EncodeUtf16Le("\U0001F600"), std::string("\x3D\xD8\x00\xDE", 4));
}

TEST(TextEncoding, CodePagesGoBothWays) {
    const std::tuple<CodePage, int, std::string_view, std::string_view> cases[] = {
        {1252, 0, "€ÿ", "\x80\xFF"},     {1251, 204, "Я", "\xDF"},
        {936, 134, "乚", "\x81\x5D"},    {932, 128, "表ｱ", "\x95\x5C\xB1"},
        {949, 129, "가", "\xB0\xA1"},    {950, 136, "中", "\xA4\xA4"},
        {kCodePageUtf8, -1, "中", "中"},
    };
    for (const auto& [codePage, charset, text, bytes] : cases) {
        EXPECT_EQ(DecodeCodePage(bytes, codePage), text);
        EXPECT_EQ(EncodeCodePage(text, codePage), bytes);
        EXPECT_TRUE(charset < 0 || CodePageOfCharset(charset) == codePage);
    }
    EXPECT_EQ(CodePageOfCharset(1), SystemAnsiCodePage());
    for (const std::string_view lookAlike : {"Ａ", "ā", "∞", "\u2011", "中"}) {
        EXPECT_EQ(EncodeCodePage(lookAlike, 1252), std::nullopt) << lookAlike;
    }
}

}  // namespace
}  // namespace tamarind
