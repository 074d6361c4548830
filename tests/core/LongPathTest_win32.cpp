#include "core/system/LongPath_win32.h"

#include <gtest/gtest.h>

namespace tamarind {
namespace {

// Wine takes long paths in any form, so that files alone do not show whether the form is right.
TEST(LongPathTest, TheFormDependsOnTheLength) {
    const std::string name(241, 'n');
    const std::tuple<std::string, std::string> cases[] = {
        {"C:\\TC\\x.ini", "C:\\TC\\x.ini"},
        {"C:/TC/.\\a\\..\\x.ini", "C:\\TC\\x.ini"},
        {"C:\\TC\\" + name, "C:\\TC\\" + name},
        {"C:\\TC\\" + name + "n", "\\\\?\\C:\\TC\\" + name + "n"},
        {"C:\\a\\..\\TC/" + name + name, "\\\\?\\C:\\TC\\" + name + name},
        {"\\\\server\\share\\" + name, "\\\\?\\UNC\\server\\share\\" + name},
    };
    for (const auto& [path, systemForm] : cases) {
        const std::wstring form = LongPath(path);
        EXPECT_EQ(Narrow(form), systemForm);
        EXPECT_EQ(LongPath(Narrow(form)), form);
        EXPECT_EQ(PlainPath(form), FullPath(path));
    }
}

}  // namespace
}  // namespace tamarind
