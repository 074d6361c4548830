// The corpus of real settings files, with the checks of the fuzzer.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/fuzz/IniDocumentChecks.h"

namespace tamarind {
namespace {

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
            for (unsigned choice = 0; choice < 16; ++choice) {
                SCOPED_TRACE(testing::Message() << entry.path() << codePage << ' ' << choice);
                CheckFile(bytes, codePage, choice * 2654435761U);
            }
        }
    }
    EXPECT_EQ(files, 12);
}

}  // namespace
}  // namespace tamarind
