#include "model/keys/ValueType.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>

#include "model/files/DataFile.h"
#include "model/files/ValueTypes.h"
#include "model/keys/ColorKeys.h"
#include "model/keys/KeyStore.h"

namespace tamarind {
namespace {

using testing::ElementsAre;

// What the description of the keys below says.
constexpr const char* kLines =
    "What it does.@0 = none@1 = one@2 = two@3.. = more@4 = reserved@-1 = never@1st field = text";

std::string ExpectedOf(const std::string& words, const std::string& value) {
    const ValueType type = ParseValueType(words);
    const auto expected = WhatIsExpected(type, DescribedValues(kLines), value);
    if (!expected) {
        return "";
    }
    std::string text(1, "OSANC"[static_cast<int>(expected->form)]);
    for (const std::string& one : expected->values) {
        text += " " + one;
    }
    const NumberRange& range = expected->range;
    text += range.least ? " from " + std::to_string(*range.least) : "";
    text += range.most ? " to " + std::to_string(*range.most) : "";
    for (const std::string& one : expected->orElse) {
        text += " or " + one;
    }
    return text;
}

TEST(ValueType, TellsWhatAValueShouldBe) {
    const struct {
        const char* words;
        std::vector<std::string> fine;
        std::vector<std::string> wrong;
        const char* expected;
    } cases[] = {
        {"bool", {"0", "1", ""}, {"2", "01", "yes"}, "O 0 1"},
        {"enum 0 1 3..", {"0", "3", "77"}, {"2", "-1", "x"}, "O 0 1 3.."},
        {"enum LZMA2 PPMD", {"PPMD"}, {"ppmd", "LZMA2 PPMD"}, "O LZMA2 PPMD"},
        {"int 8..256 px -1",
         {"8", "256", "-1"},
         {"7", "257", "9.5", "9px"},
         "N from 8 to 256 or -1"},
        {"int ..100", {"100", "-5"}, {"101"}, "N to 100"},
        {"int 0..", {"0", "99999999999"}, {"-1"}, "N from 0"},
        {"int history", {"5"}, {"x"}, "N"},
        {"flags 1 2|8 -1", {"0", "3", "9", "-1", "4"}, {"16", "-2", "x"}, "S 1 2 8 or -1"},
        {"flags 1 2|8", {}, {"10", "11"}, "A 2 8"},
        {"flags 1|2|3", {"1", "2", "3"}, {"64"}, "S 1 2 3"},
        {"color -1",
         {"255", "$fF", "#A0b0C0", "-1"},
         {"-2", "16777216", "$1000000", "#FFF", "$"},
         "C or -1"},
        {"path file *.dll;*.icl history", {"anything"}, {}, ""},
        {"list comma", {"a,b"}, {}, ""},
        {"font Size Weight", {"Arial"}, {}, ""},
    };
    for (const auto& c : cases) {
        for (const std::string& value : c.fine) {
            EXPECT_EQ(ExpectedOf(c.words, value), "") << c.words << ": " << value;
        }
        for (const std::string& value : c.wrong) {
            EXPECT_EQ(ExpectedOf(c.words, value), c.expected) << c.words << ": " << value;
        }
    }
}

TEST(ValueType, UnknownWordsMakeAString) {
    for (const char* const words : {"",
                                    "number",
                                    "bool 0",
                                    "enum",
                                    "enum 1..x",
                                    "flags",
                                    "flags 1 0",
                                    "flags 3|2 1",
                                    "int 1.5",
                                    "int 8..256 inches",
                                    "int 8..3",
                                    "path",
                                    "path place",
                                    "path folder *.x",
                                    "list",
                                    "list dot",
                                    "color red",
                                    "font",
                                    "font a b c d",
                                    "string 1",
                                    "history"}) {
        EXPECT_EQ(ParseValueType(words).kind, ValueKind::String) << words;
    }
    EXPECT_EQ(ParseValueType("path program *.exe").pattern, "*.exe");
    EXPECT_EQ(ParseValueType("int 1.. min 0").unit, "min");
}

TEST(ValueType, ChoicesHaveTheTextsOfTheDescription) {
    const auto choices = [](const std::string& words) {
        std::vector<std::string> texts;
        const auto type = ParseValueType(words);
        for (const ValueChoice& choice : ChoicesOf(type, DescribedValues(kLines))) {
            texts.push_back(choice.value + ":" + std::string(choice.text));
        }
        return texts;
    };
    EXPECT_THAT(choices("bool"), ElementsAre("0:none", "1:one"));
    EXPECT_THAT(choices("enum 2 0 3.. 9"), ElementsAre("2:two", "0:none", "3:more", "9:"));
    EXPECT_THAT(choices("flags 1|2 8 -1"), ElementsAre("1:one", "2:two", "8:", "-1:never"));
    EXPECT_THAT(choices("int 0.. -1"), ElementsAre("-1:never"));

    const auto meaning = [](const std::string& words, const std::string& value) {
        return MeaningOf(ParseValueType(words), DescribedValues(kLines), value);
    };
    EXPECT_EQ(meaning("enum 0 1 3..", "12"), "more");
    EXPECT_EQ(meaning("flags 1 2", "3"), "one; two");
    EXPECT_EQ(meaning("flags 1 2", "0"), "none");
    EXPECT_EQ(meaning("int 0.. -1", "-1"), "never");
    EXPECT_EQ(meaning("int 0.. -1", "1"), "") << "a line that the type does not name";

    const auto kindOf = [](const char* description) {
        return TypeOfDescription(DescribedValues(description)).kind;
    };
    EXPECT_EQ(kindOf("On or off.@0 = off@1 = on"), ValueKind::Bool);
    EXPECT_EQ(kindOf("@1 = a@2 = b"), ValueKind::Enum);
    EXPECT_EQ(kindOf("Yes = no@1 = a"), ValueKind::String);
}

TEST(ValueType, SumsAreTakenApart) {
    const ValueType type = ParseValueType("flags 1 2|4 8|16|24 -1");
    const struct {
        const char* value;
        const char* choice;
        bool isSet;
        const char* after;
    } cases[] = {
        {"3", "1", true, "2"},
        {"3", "4", false, "5"},
        {"5", "4", true, "1"},
        {"24", "8", false, "8"},
        {"24", "24", true, "0"},
        {"16", "24", false, "24"},
        {"32", "1", false, "33"},
        {"x", "1", false, "1"},
        {"", "8", false, "8"},
        {"-1", "-1", true, "0"},
        {"5", "-1", false, "-1"},
        {"-1", "1", false, "1"},
        {"9223372036854775807", "1", true, "9223372036854775806"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(HasBits(type, c.value, c.choice), c.isSet) << c.value << " " << c.choice;
        EXPECT_EQ(WithBitsToggled(type, c.value, c.choice), c.after) << c.value << " " << c.choice;
    }
    EXPECT_EQ(OtherBits(type, "97"), 96U);

    const ValueType number = ParseValueType("int 8..10");
    EXPECT_EQ(Stepped(number, "9", 1), "10");
    EXPECT_EQ(Stepped(number, "10", 1), "10");
    EXPECT_EQ(Stepped(number, "x", -1), "8");
    EXPECT_EQ(Stepped(number, "-9223372036854775808", -1), "8");
    EXPECT_EQ(Stepped(ParseValueType("int"), "-1", -1), "-2");
}

TEST(ValueType, ColorsHaveThreeForms) {
    EXPECT_EQ(ParseColor("$0000FF"), ParseColor("255"));
    EXPECT_EQ(ParseColor("#FF0080"), 0x8000FFU);
    EXPECT_EQ(FormatColor(0x8000FF, "255"), "8388863");
    EXPECT_EQ(FormatColor(0x8000FF, "$1"), "$8000FF");
    EXPECT_EQ(FormatColor(0x8000FF, "#000000"), "#FF0080");
    EXPECT_TRUE(IsSameValue("$0000ff", "255"));
    EXPECT_TRUE(IsSameValue("01", "1"));
    EXPECT_FALSE(IsSameValue("a", "A"));
}

// The files that come with the program: what the types say and what the program makes of them.
TEST(ValueType, AllShippedTypesFitTheirKeys) {
    const auto read = [](const std::string& name) {
        std::ifstream file("Data Files/" + name, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        return std::make_shared<const IniDocument>(IniDocument::Parse(bytes, 1252));
    };
    const std::pair<const char*, const char*> files[] = {
        {"tc all keys english.tmdf", "Wincmd.types"},
        {"tc wcx_ftp keys german.tmdf", "Wcx_ftp.types"},
        {"tc all keys german.tmdf", "Wincmd.types"}};
    for (const auto& [dataFile, typesFile] : files) {
        const ValueTypes types(read(typesFile));
        KeyStore store;
        LoadDataFile(
            read(dataFile), "none", [] {}, store);
        ASSERT_GT(store.Size(), 100U) << dataFile;
        for (KeyNumber key = 1; key <= store.Size(); ++key) {
            const std::string_view section = store.TargetSection(key);
            const std::string_view words = types.WordsOf(section, store.KeyName(key));
            const auto type = types.TypeOf(section, store.KeyName(key));
            SCOPED_TRACE(testing::Message()
                         << section << " " << store.KeyName(key) << " " << words);
            ASSERT_TRUE(type);
            EXPECT_EQ(type->kind == ValueKind::String, words.starts_with("string"));
            const KeyEntry entry =
                SplitEntry(*store.DataFile().FindValue(store.Category(key), store.KeyName(key)));
            const auto lines = DescribedValues(entry.description);
            EXPECT_FALSE(WhatIsExpected(*type, lines, entry.defaultValue)) << entry.defaultValue;
            for (const ValueChoice& choice : ChoicesOf(*type, lines)) {
                EXPECT_FALSE(choice.text.empty()) << choice.value;
                EXPECT_FALSE(WhatIsExpected(*type, lines, choice.value)) << choice.value;
            }
        }
    }
}

}  // namespace
}  // namespace tamarind
