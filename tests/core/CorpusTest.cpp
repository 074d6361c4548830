// The corpus of real settings files, with edits checked on the bytes alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/ini/IniDocument.h"

namespace tamarind {
namespace {

struct CorpusFile {
    std::string name;
    std::string bytes;
};

std::vector<CorpusFile> ReadCorpus() {
    std::vector<CorpusFile> files;
    for (const auto& entry : std::filesystem::directory_iterator("tests/data/corpus")) {
        if (entry.path().extension() == ".ini") {
            std::ifstream stream(entry.path(), std::ios::binary);
            files.push_back(
                {entry.path().filename().string(), {std::istreambuf_iterator<char>(stream), {}}});
        }
    }
    return files;
}

// Lines with their ends, which suffices for files that have no lone CR.
std::vector<std::string> Lines(const std::string& bytes) {
    const std::size_t unit = FindFileMark(bytes) == FileMark::Utf16Le ? 2 : 1;
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < bytes.size(); i += unit) {
        lines.back() += bytes.substr(i, unit);
        if (bytes[i] == '\n' && (unit == 1 || bytes[i + 1] == '\0')) {
            lines.emplace_back();
        }
    }
    return lines;
}

// Calls `visit` with section and name of every `step`th key that can be found.
template <typename Visit>
void ForEveryNthKey(const IniDocument& document, int step, Visit visit) {
    int count = 0;
    for (IniDocument::SectionId id = 0; id < document.SectionCount(); ++id) {
        const std::string section(document.SectionName(id));
        for (auto line = document.FirstLine(id);
             line != IniDocument::kNone && document.FindSection(section) == id;
             line = document.NextLine(line)) {
            if (document.Kind(line) == IniLineKind::Key && count++ % step == 0) {
                visit(section, std::string(document.KeyName(line)));
            }
        }
    }
}

void CheckSettingAKey(IniDocument document, const std::vector<std::string>& before,
                      const std::string& section, const std::string& key, CodePage codePage) {
    ASSERT_EQ(document.SetValue(section, key, "new ü値"), IniEdit::Changed);
    const std::string bytes = document.Bytes();
    EXPECT_EQ(document.FindValue(section, key), "new ü値");
    EXPECT_EQ(IniDocument::Parse(bytes, codePage).FindValue(section, key), "new ü値");
    const std::vector<std::string> after = Lines(bytes);
    ASSERT_EQ(after.size(), before.size());
    const auto [old, changed] = std::mismatch(before.begin(), before.end(), after.begin());
    EXPECT_TRUE(std::equal(old + 1, before.end(), changed + 1));
    EXPECT_EQ(old->substr(0, old->find('=')), changed->substr(0, changed->find('=')));
}

TEST(Corpus, EditsChangeTheirLinesOnly) {
    const std::vector<CorpusFile> files = ReadCorpus();
    ASSERT_EQ(files.size(), 12U);
    for (const CorpusFile& file : files) {
        const std::vector<std::string> before = Lines(file.bytes);
        for (const CodePage codePage : {1252U, 1251U, 936U}) {
            const IniDocument document = IniDocument::Parse(file.bytes, codePage);
            EXPECT_EQ(document.Bytes(), file.bytes) << file.name << " in " << codePage;
            ForEveryNthKey(document, 17, [&](const std::string& section, const std::string& key) {
                SCOPED_TRACE(testing::Message() << file.name << " [" << section << "] " << key);
                CheckSettingAKey(document, before, section, key, codePage);
            });
        }
    }
}

}  // namespace
}  // namespace tamarind
