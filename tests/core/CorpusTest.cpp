// The corpus of real settings files, with edits checked on the bytes alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/ini/IniEntries.h"

namespace tamarind {
namespace {

// Bytes from either end that both have.
template <typename Iterator>
std::size_t CommonBytes(Iterator one, Iterator oneEnd, Iterator other, Iterator otherEnd) {
    return static_cast<std::size_t>(std::mismatch(one, oneEnd, other, otherEnd).first - one);
}

void CheckSettingAKey(IniDocument document, const std::string& before, IniDocument::LineId line,
                      const std::string& section, CodePage codePage) {
    const std::string key(document.KeyName(line));
    const std::size_t sign = before.find('=', document.OffsetOf(line));
    ASSERT_EQ(document.SetValue(section, key, "new ü値"), IniEdit::Changed);
    const std::string after = document.Bytes();
    EXPECT_EQ(document.FindValue(section, key), "new ü値");
    EXPECT_EQ(IniDocument::Parse(after, codePage).FindValue(section, key), "new ü値");
    const auto front = CommonBytes(before.begin(), before.end(), after.begin(), after.end());
    const auto back = CommonBytes(before.rbegin(), before.rend(), after.rbegin(), after.rend());
    const std::size_t changed = before.size() - std::min(before.size(), front + back);
    const std::string lineEnd("\n\0", FindFileMark(before) == FileMark::Utf16Le ? 2 : 1);
    EXPECT_GT(front, sign);
    EXPECT_EQ(before.substr(front, changed).find(lineEnd), std::string::npos);
}

TEST(Corpus, EditsChangeTheirLinesOnly) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/corpus")) {
        if (entry.path().extension() != ".ini") {
            continue;
        }
        ++files;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        for (const CodePage codePage : {1252U, 1251U, 936U}) {
            const IniDocument document = IniDocument::Parse(bytes, codePage);
            EXPECT_EQ(document.Bytes(), bytes) << entry.path() << " in " << codePage;
            int count = 0;
            ForEachEntry(document, [&](std::string_view section, IniDocument::LineId line) {
                if (count++ % 17 == 0) {
                    SCOPED_TRACE(testing::Message() << entry.path() << ", line " << line);
                    CheckSettingAKey(document, bytes, line, std::string(section), codePage);
                }
            });
        }
    }
    EXPECT_EQ(files, 12);
}

}  // namespace
}  // namespace tamarind
