#include "core/ini/IniDocument.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "core/ini/ShownValue.h"
#include "core/text/RandomSeed.h"
#include "tests/fuzz/IniDocumentChecks.h"

namespace tamarind {
namespace {

using namespace std::string_literals;

const std::optional<std::string> kMissing;

std::string Utf16(std::string_view text) {
    return "\xFF\xFE"s + EncodeUtf16Le(text);
}

std::optional<std::string> Find(const IniDocument& document, std::string_view section,
                                std::string_view key) {
    const auto value = document.FindValue(section, key);
    return value ? std::optional(std::string(*value)) : std::nullopt;
}

struct ReadCase {
    std::string bytes, section, key;
    std::optional<std::string> expected;
    CodePage codePage = 1252;
};

void CheckReads(const std::vector<ReadCase>& cases) {
    for (const ReadCase& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.bytes) + " " + c.section + "/" + c.key);
        const IniDocument document = IniDocument::Parse(c.bytes, c.codePage);
        EXPECT_EQ(Find(document, c.section, c.key), c.expected);
        EXPECT_EQ(document.Bytes(), c.bytes);
    }
}

TEST(IniDocumentRead, VeryLongNamesAndVeryManySections) {
    for (const std::size_t length : {0xFFFF, 0x10000, 0x20001}) {
        const std::string name(length, 'n');
        IniDocument document = IniDocument::Parse("[" + name + "]\n" + name + "= 1 \n", 1252);
        EXPECT_EQ(Find(document, name, name), "1");
        EXPECT_EQ(document.ToggleComment(name, name, true), IniEdit::Changed);
        EXPECT_EQ(Find(document, name, ";" + name), "1");
    }
    // More names than the table has room for at first.
    std::string bytes = "[first]\nx=1\n";
    for (int i = 0; i < 250'000; ++i) {
        bytes += "[" + std::to_string(i % 2 == 0 ? i : 0) + "]\n";
    }
    const IniDocument document = IniDocument::Parse(bytes + "[last]\nx=2\n", 1252);
    EXPECT_EQ(Find(document, "first", "x"), "1");
    EXPECT_EQ(Find(document, "last", "x"), "2");
    EXPECT_EQ(document.FindSection("0"), 1U);
}

TEST(IniDocumentRead, NamesAndHeaders) {
    CheckReads({
        {"[Sect]\r\nKey=Val\r\n", "sECT", "kEY", "Val"},
        {" \t\v[ \tA\v ] \r\n \tx \t= \v1 \t\r\n", "A", "x", "1"},
        {"[A]\nx=1\n", "  A ", " x  ", "1"},
        {"[A]\nx=1\n", "A\t", "x", kMissing},
        {"[A]junk]\nx=1\n", "A", "x", "1"},
        {"[Left \nx=1\n", "Left", "x", "1"},
        {"[]\nx=1\n", "", "x", "1"},
        {"x=1\n[A]\ny=2\n", "", "x", kMissing},
        {"[A]\nx=1\n[a]\nx=2\ny=3\n", "A", "x", "1"},
        {"[A]\n[A]\nx=2\n", "A", "x", kMissing},
        {"[A]\n=value\n", "A", "", "value"},
        {"[\xD6\xE2\xE5\xF2\xE0]\n\xDF=\xFF\n", "ЦВЕТА", "я", "я", 1251},
        // The last byte of these names' last character is that of "]".
        {"[\x94\x5D]\nx=\x95\x5C\n", "脳", "x", "表", 932},
        {"[A\x81\x5D]\nx=\x81\x5D\n", "a乚", "x", "乚", 936},
        // The first byte of a pair in one code page is a letter of its own in another.
        {"[\x94\x5D]\nx=1\n", "\u201D", "x", "1", 1252},
    });
}

TEST(IniDocumentRead, ValuesCommentsAndLineEnds) {
    CheckReads({
        {"[A]\nx=\"  v \"\n", "A", "x", "  v "},
        {"[A]\nx='v'  \n", "A", "x", "v"},
        {"[A]\nx=\"v'\n", "A", "x", "\"v'"},
        {"[A]\nx=\"\n", "A", "x", "\""},
        {"[A]\nEditor=\"\"C:\\dir\\x.exe\" \"%1\"\"\n", "A", "Editor", "\"C:\\dir\\x.exe\" \"%1\""},
        {"[A]\nDirBrackets=0\t;comment\t\n", "A", "DirBrackets", "0\t;comment"},
        {"[A]\nx\ny=1\n", "A", "x", kMissing},
        {"[A]\n \t;X = 1\n", "A", ";x", "1"},
        {"[A]\n;x=1\nx=2\n;x=3\n", "A", ";x", "1"},
        {"[A]\rx=1\ry=2\r", "A", "y", "2"},
        {"[A]\nx=1\r\n\r\ry=2", "A", "y", "2"},
        {"[A]\nx=1\n\0y=2\nz\0=3\0\n4=5\n"s, "A", "4", "5"},
        {"[A]\nx=1\n\0y=2\nz\0=3\0\n"s, "A", "z\0"s, "3\0"s},
    });
    // A large file of nothing costs little more than its bytes.
    const std::string prose = "[A]\n" + std::string(1000, '\n') + "x=1\n\n;a\nb\r\n\r[B]\n";
    EXPECT_EQ(IniDocument::Parse(prose, 1252).LineCount(), 5U);
    // Known before anything was looked up.
    const auto twice = IniDocument::Parse("[A]\nx=1\nX=2\n[B]\nx=3\n", 1252);
    EXPECT_TRUE(!twice.AllNamesDiffer(0) && twice.IsRepeated(0, 2) && twice.AllNamesDiffer(1));
}

TEST(IniDocumentRead, Encodings) {
    CheckReads({
        {"[A]\nx=\x80\xFC\n", "A", "x", "€ü", 1252},
        {"[A]\nx=\x81\x5C\x22\n", "A", "x", "―\"", 932},
        // UTF-8 without a mark is text of the code page.
        {"[A]\nx=\xC3\xBC\n", "A", "x", "Ã¼"},
        {"\xEF\xBB\xBF[Ä]\nx=中\n", "ä", "X", "中"},
        {"\xEF\xBB\xBF[A]\nx=\xEF\xBB\xBF"
         "1\n",
         "A", "x", "\uFEFF1"},
        {"\xEF\xBB\xBF[A]\nx=a\xFFz\n", "A", "x", "a\uFFFDz"},
        {Utf16("[Ä]\r\nx=中 \U0001F600 \r\n"), "ä", "x", "中 \U0001F600"},
        {Utf16("[A]\r\nx=1") + "2", "A", "x", "1"},
        {Utf16("[A]\r\nx=1\r\n") + "\n", "A", "x", "1"},
        {Utf16("[A]\nx=") + "\x00\xD8"s + EncodeUtf16Le("1\ny=2"), "A", "x", "\uFFFD1"},
        {Utf16("[A]\nx=") + "\x3D\x0D\x0A\x3D"s + EncodeUtf16Le("\ny=2"), "A", "y", "2"},
        // Values in an encoding of their own.
        {"[A]\n\xE4=\xEF\xBB\xBF中\n", "A", "ä", "中"},
        {"[A]\nx= \"\xEF\xBB\xBF 中 \" \n", "A", "x", " 中 "},
        {"[A]\nx=\xEF\xBB\xBF\"中\"\n", "A", "x", "\"中\""},
        {"[A]\nx=\xEF\xBB\xBF\n", "A", "x", "", 1251},
    });
}

using Edit = std::function<IniEdit(IniDocument&)>;

Edit Set(std::string_view section, std::string_view key, std::string_view value) {
    return [=](IniDocument& document) { return document.SetValue(section, key, value); };
}

Edit DeleteKey(std::string_view key) {
    return [=](IniDocument& document) { return document.DeleteKey("A", key); };
}

Edit Toggle(std::string_view key, bool isCommented) {
    return [=](IniDocument& document) { return document.ToggleComment("a", key, isCommented); };
}

const Edit kSetX = Set("a", " X ", "1");
const Edit kSetChinese = Set("A", "x", "中");
const Edit kDeleteX = DeleteKey("x");
const Edit kDropA = [](IniDocument& document) { return document.DeleteSection("a"); };

struct EditCase {
    std::string before;
    std::vector<Edit> edits;
    std::string after;  // nothing changes if it is the same
    CodePage codePage = 1252;
};

void CheckEdits(const std::vector<EditCase>& cases) {
    for (const EditCase& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.before));
        IniDocument document = IniDocument::Parse(c.before, c.codePage);
        IniEdit result = IniEdit::Unchanged;
        for (const Edit& edit : c.edits) {
            result = edit(document);
        }
        EXPECT_EQ(document.Bytes(), c.after);
        EXPECT_EQ(result, c.before == c.after ? IniEdit::Unchanged : IniEdit::Changed);
        // What an edit leaves behind reads as it does when it is parsed anew.
        IniDocument reread = IniDocument::Parse(document.Bytes(), c.codePage);
        for (const std::string key : {"x", ";x", "y", "q"}) {
            EXPECT_EQ(Find(document, "A", key), Find(reread, "A", key));
        }
        // The place of new keys follows.
        EXPECT_EQ(document.SetValue("A", "new", "1"), reread.SetValue("A", "new", "1"));
        EXPECT_EQ(document.Bytes(), reread.Bytes());
    }
}

TEST(IniDocumentEdit, ReplacesValuesInPlace) {
    CheckEdits({
        {"[A]\r\n\t X =  old \t\r\n;c\r\n", {kSetX}, "[A]\r\n\t X =  1 \t\r\n;c\r\n"},
        {"[A]\nx=\"old\"\n", {kSetX}, "[A]\nx=1\n"},
        {"[A]\nx=0\nX=2\n[A]\nx=3\n", {kSetX}, "[A]\nx=1\nX=2\n[A]\nx=3\n"},
        {"[A]\n;x=0\nx=0\n", {kSetX}, "[A]\n;x=0\nx=1\n"},
        {"j\0unk\r[A]\n\0\nx=0\r\xFF"s, {kSetX}, "j\0unk\r[A]\n\0\nx=1\r\xFF"s},
        {"[A]\nx = \"1\" \n", {kSetX}, "[A]\nx = \"1\" \n"},
        {"[A]\nx=\"1\"\n", {Set("A", "x", "\"1\"")}, "[A]\nx=\"1\"\n"},
        {"[A]\nx=1\n", {Set("A", "x", " '1'")}, "[A]\nx= '1'\n"},
        {"[A]\nx=1\n", {Set("A", "x", "")}, "[A]\nx=\n"},
        // The same text with one pair of quotes less: the line's reading is no reason to keep it.
        {"[A]\nx=\"\"\"a\" \"%1\"\"\"\n",
         {Set("A", "x", "\"\"a\" \"%1\"\"")},
         "[A]\nx=\"\"a\" \"%1\"\"\n"},
        {"[A]\nx=\"\"'1'\"\"\n", {Set("A", "x", "\"'1'\"")}, "[A]\nx=\"'1'\"\n"},
    });
}

TEST(IniDocumentEdit, AddsKeysAndSections) {
    CheckEdits({
        {"", {kSetX}, "[a]\r\nX=1\r\n"},
        {"[A]", {kSetX}, "[A]\r\nX=1\r\n"},
        {"[A]\n;c\n\n[B]\ny=2\n", {kSetX}, "[A]\nX=1\n;c\n\n[B]\ny=2\n"},
        {"[A]\ny=2\nprose\n;z=3\n\n[B]\n", {kSetX}, "[A]\ny=2\nX=1\nprose\n;z=3\n\n[B]\n"},
        {"[B]\ny=2\n\n;end\n", {kSetX}, "[B]\ny=2\n\n;end\n[a]\nX=1\n"},
        {"[B]\ry=2\r", {kSetX}, "[B]\ry=2\r[a]\rX=1\r"},
        {"x=5", {kSetX}, "x=5\r\n[a]\r\nX=1\r\n"},
        // The line end of the section's last line, which is not that of the file.
        {"[B]\n[A]\r\ny=2\r\n[C]\n", {kSetX}, "[B]\n[A]\r\ny=2\r\nX=1\r\n[C]\n"},
        // Lines of prose in a row, and a file that begins with some.
        {"[A]\ny=2\n\n;c\n;d\r\n", {kSetX}, "[A]\ny=2\nX=1\r\n\n;c\n;d\r\n"},
        {"\n;c\r\n\r\n[A]", {kSetX}, "\n;c\r\n\r\n[A]\nX=1\n"},
        {"[A]\ny=2\nz=3",
         {kSetX, Set("A", ";w", "0"), Set("a", "q", "\"4\"")},
         "[A]\ny=2\nz=3\nX=1\n;w=0\nq=\"4\"\n"},
        {"[\x94\x5D]\ny=2\n[B]\n",
         {Set("脳", "表", "ソ")},
         "[\x94\x5D]\ny=2\n\x95\x5C=\x83\x5C\n[B]\n",
         932},
    });
}

TEST(IniDocumentEdit, RemovesKeysAndSections) {
    const Edit deleteOneX = [](IniDocument& document) {
        return document.DeleteValue(" A ", " X ");
    };
    CheckEdits({
        {"[A]\nx=1\ny=2\nX=3\n;x=4\n[A]\nx=5\n", {kDeleteX}, "[A]\ny=2\n;x=4\n[A]\nx=5\n"},
        {"[A]\nx=1\ny=2\nX=3\n", {deleteOneX}, "[A]\ny=2\nX=3\n"},
        {"[A]\r\nx=1", {kDeleteX}, "[A]\r\n"},
        {"[A]\n;x=1\nx=2\n", {DeleteKey(";X")}, "[A]\nx=2\n"},
        {"[A]\ny=2\nx=0\n;c\n", {kDeleteX, kSetX}, "[A]\ny=2\nX=1\n;c\n"},
        {"[B]\ny=2\n[A] ;\n;c\n;x=3\nx=1\nprose\n\n[C]\n",
         {kDropA},
         "[B]\ny=2\n;c\n;x=3\nprose\n\n[C]\n"},
        // The second section of the name counts from then on.
        {"[A]\nx=1\n[a]\nx=2\n", {kDropA}, "[a]\nx=2\n"},
    });
}

TEST(IniDocumentEdit, KeepsEncodings) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string half = "\x00\xDC"s;  // of a surrogate pair
    CheckEdits({
        {mark + "[A]\nx=0\n", {kSetChinese}, mark + "[A]\nx=中\n"},
        {mark, {kSetChinese}, mark + "[A]\r\nx=中\r\n"},
        {mark + "[A]\ny=\xFF\nx=\xFF\n", {kSetX}, mark + "[A]\ny=\xFF\nx=1\n"},
        {Utf16("[A]\r\n x =\t0 \r\n;c"), {kSetChinese}, Utf16("[A]\r\n x =\t中 \r\n;c")},
        {Utf16("[A]\ny=2"), {kSetChinese}, Utf16("[A]\ny=2\nx=中\n")},
        // Half a character at the end of the file stays there, whatever comes before it.
        {Utf16("[A]\nx=0") + "z", {kSetX}, Utf16("[A]\nx=1") + "z"},
        {Utf16("[A]\ny=2") + "z", {kSetX}, Utf16("[A]\ny=2\nX=1\n") + "z"},
        {Utf16("[B]\n") + "\r", {kSetX}, Utf16("[B]\n[a]\nX=1\n") + "\r"},
        {Utf16("[A]\nx=") + half, {kSetX}, Utf16("[A]\nx=1")},
        {Utf16("[A]\nx=") + half, {Set("A", "x", "\uFFFD")}, Utf16("[A]\nx=") + half},
        {"[A]\nx=\xD6\xD0 \n", {kSetChinese}, "[A]\nx=\xD6\xD0 \n", 936},
        {"[A]\nx=0\n", {kSetChinese}, "[A]\nx=\xD6\xD0\n", 936},
        {"[A]\nx=0 \n", {kSetChinese}, "[A]\nx=" + mark + "中 \n"},
        {"[A]\n", {kSetChinese}, "[A]\nx=" + mark + "中\n", 1251},
        {"[A]\nx=" + mark + "文\n", {kSetX}, "[A]\nx=" + mark + "1\n"},
        {"[A]\nx=" + mark + "中\n", {kSetChinese}, "[A]\nx=" + mark + "中\n"},
        // A value's own mark stands inside its outer quotes: a reader looks for it without them.
        {"[A]\nx=0\n", {Set("A", "x", "\"\"中\" 1\"")}, "[A]\nx=\"" + mark + "\"中\" 1\"\n"},
        {"[A]\nx=\"" + mark + "中\"\n", {Set("A", "x", "\"中\"")}, "[A]\nx=\"" + mark + "中\"\n"},
        // No look-alikes: the code page has "A", "a" and "8", not these.
        {"[A]\n", {Set("A", "x", "Ａā∞")}, "[A]\nx=" + mark + "Ａā∞\n"},
        // Text that would be taken for a mark.
        {"[A]\n", {Set("A", "x", "ï»¿1")}, "[A]\nx=" + mark + "ï»¿1\n"},
    });
}

TEST(IniDocumentEdit, TogglesTheCommentMarkAlone) {
    const Edit comment = Toggle("X", true);
    const Edit uncomment = Toggle("X", false);
    CheckEdits({
        {"[A]\n\t x = \"v\" \nx=2", {comment}, "[A]\n\t ;x = \"v\" \nx=2"},
        {"[A]\ny=1\n ;x=v\n;X=w", {uncomment}, "[A]\ny=1\n x=v\n;X=w"},
        {Utf16("[A]\r\n x=中\r\n"), {comment}, Utf16("[A]\r\n ;x=中\r\n")},
        // The first half of this letter is a vertical tab's code.
        {Utf16("[A]\r\n\v下=1\r\n"), {Toggle("下", true)}, Utf16("[A]\r\n\v;下=1\r\n")},
        {Utf16("[A]\n;x=1") + "z", {uncomment}, Utf16("[A]\nx=1") + "z"},
        {"[A]\n; x=1\n", {uncomment}, "[A]\n; x=1\n"},
    });
}

// Refused: the file stays as it was.
TEST(IniDocumentEdit, RefusesWhatCannotBeReadBack) {
    const std::tuple<std::string, std::string, std::string, IniEdit> cases[] = {
        {"A", "中", "1", IniEdit::NameNotEncodable},   {"中", "x", "1", IniEdit::NameNotEncodable},
        {"Ａ", "x", "1", IniEdit::NameNotEncodable},   {"A", "x", "1\n", IniEdit::TextNotStorable},
        {"A", "y\0"s, "1", IniEdit::TextNotStorable},  {"B\n", "y", "1", IniEdit::TextNotStorable},
        {"A", "y=z", "1", IniEdit::TextNotStorable},   {"A", "[y", "1", IniEdit::TextNotStorable},
        {"A", "\ty", "1", IniEdit::TextNotStorable},   {"A]b", "y", "1", IniEdit::TextNotStorable},
        {"A", "y\xFF", "1", IniEdit::TextNotStorable}, {"A", "y", "\xC3", IniEdit::TextNotStorable},
    };
    const std::string before = "[A]\nx=0";
    for (const auto& [section, key, value, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(section + "/" + key + "/" + value));
        IniDocument document = IniDocument::Parse(before, 1252);
        EXPECT_EQ(document.SetValue(section, key, value), expected);
        EXPECT_EQ(document.Bytes(), before);
    }
    // No lines are added to what is no text.
    for (const std::string& file : {"\xFE\xFF\0[\0A\0]"s, "\xFE\xFF"s, "[A]\nx=0\n\0"s}) {
        SCOPED_TRACE(testing::PrintToString(file));
        IniDocument document = IniDocument::Parse(file, 1252);
        EXPECT_EQ(document.SetValue("A", "y", "1"), IniEdit::FileNotText);
        EXPECT_EQ(document.Bytes(), file);
        const bool hasKey = document.FindValue("A", "x").has_value();
        EXPECT_EQ(document.SetValue("A", "x", "1"),
                  hasKey ? IniEdit::Changed : IniEdit::FileNotText);
    }
}

// Files of one line and edits by all ways there are, others with each --gtest_repeat that comes
// with --gtest_shuffle.
TEST(IniDocumentEdit, WhatIsReadIsWhatWasMeant) {
    std::mt19937 random(static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed()));
    const auto pick = [&](std::size_t count) { return random() % count; };
    const auto text = [&](const std::vector<std::string>& parts, std::size_t most) {
        std::string result;
        for (std::size_t left = pick(most + 1); left > 0; --left) {
            result += parts[pick(parts.size())];
        }
        return result;
    };
    const std::vector<std::string> blanks = {" ", "\t", "\v"};
    const std::vector<std::string> parts = {"\"", "\"", "'",      "'",   " ", "\t", "a",
                                            ";",  "=",  "\uFEFF", "ï»¿", "ü", "中"};
    const CodePage codePages[] = {1252, 1251, 936, kCodePageUtf8};
    for (int pair = 0; pair < 20'000 && !HasFailure(); ++pair) {
        const std::string form = pick(2) == 0 ? "x" : ";x";
        const std::string line = text(blanks, 2) + form + text(blanks, 2) + "=" + text(blanks, 2) +
                                 text({"\"", "'", "\uFEFF"}, 2) + text(parts, 8);
        const std::string bytes = pick(4) == 0   ? Utf16("[A]\n" + line)
                                  : pick(3) == 0 ? "\uFEFF[A]\n" + line
                                                 : "[A]\n" + line;
        const CodePage codePage = codePages[pick(std::size(codePages))];
        IniDocument document = IniDocument::Parse(bytes, codePage);
        const std::string present = Find(document, "A", form).value_or("not found");
        const std::string values[] = {present, "\"" + present + "\"", "'" + present + "'",
                                      std::string(UnquoteIniValue(present)), text(parts, 8)};
        const std::string& value = values[pick(std::size(values))];
        const std::string key = pick(2) == 0 ? "x" : ";x";
        const bool movesForm = pick(2) == 0;
        const bool isKept = value == present && (movesForm || key == form);
        const auto way = pick(3);
        SCOPED_TRACE(testing::PrintToString(bytes) + "; " + testing::PrintToString(value) +
                     " by way " + std::to_string(way) + " as " + key);
        std::string meant = value;
        if (way == 0) {
            document.SetValue("A", key, value);
            meant = UnquoteIniValue(TrimIniBlanks(value));
        } else if (way == 1) {
            WriteExactValue(document, "A", key, value);
        } else {
            const KeyForm keyForm = key == "x" ? KeyForm::Active : KeyForm::Commented;
            WriteShownValue(document, "A", "x", keyForm, movesForm, value);
            meant = isKept ? value : StoredValue(value);
        }
        const IniDocument reread = IniDocument::Parse(document.Bytes(), codePage);
        EXPECT_EQ(Find(document, "A", key), meant);
        EXPECT_EQ(Find(reread, "A", key), meant);
        const bool keepsOther = key == form || (way == 2 && movesForm);
        EXPECT_EQ(Find(reread, "A", key == "x" ? ";x" : "x"),
                  keepsOther ? kMissing : std::optional(present));
    }
}

// Many edits, so that the tables of names grow, hold erased places and give way to trees.
TEST(IniDocumentEdit, FindsAmongManyEdits) {
    // Names that stand in one short row of a table as long as the seed is 1.
    SetTableHashSeed(1);
    std::vector<std::string> names;
    for (int i = 0; names.size() < 1400; ++i) {
        const std::string name = "key" + std::to_string(i);
        if ((IniDocument::NameHash(name) & 0xFFF) < 64) {
            names.push_back(name);
        }
    }
    for (const bool collides : {true, false}) {
        SetTableHashSeed(collides ? 1 : RandomSeed());
        IniDocument document = IniDocument::Parse("[A]\n", 1252);
        const auto name = [&](std::size_t i) {
            return (i % 2800 < 1400 ? "" : ";") + names[i % 1400];
        };
        for (std::size_t i = 0; i < 10'000; ++i) {
            const std::string section = i % 50 == 0 ? "S" + std::to_string(i) : "A";
            i % 3 == 2 ? document.DeleteKey("A", name(i * 7))
                       : document.SetValue(section, name(i), name(i + 1));
        }
        const IniDocument reread = IniDocument::Parse(document.Bytes(), 1252);
        CheckLookUps(reread, 10'000);
        const auto section = *document.FindSection("A");
        for (const std::string& plain : names) {
            for (const std::string& key : {plain, ";" + plain}) {
                EXPECT_EQ(Find(document, "A", key), Find(reread, "A", key));
            }
            const auto forms = document.FindKeyForms(section, plain, IniDocument::NameHash(plain));
            EXPECT_EQ(forms.active, document.FindKey(section, plain).value_or(IniDocument::kNone));
            if (forms.active == IniDocument::kNone) {
                EXPECT_EQ(forms.commented,
                          document.FindKey(section, ";" + plain).value_or(IniDocument::kNone));
            }
        }
        EXPECT_EQ(Find(document, "S9850", name(9850)), name(9851));
        EXPECT_EQ(document.SectionCount(), reread.SectionCount());
    }
}

}  // namespace
}  // namespace tamarind
