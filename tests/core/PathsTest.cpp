#include "core/files/Paths.h"

#include <gtest/gtest.h>

#include "tests/core/fakes/FakeEnvironment.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

TEST(Paths, ExpandsWholeSegments) {
    FakeEnvironment environment;
    environment.variables = {{"TC", "C:\\TC"}, {"END", "D:\\"}, {"", "wrong"}, {"a%b", "odd"}};
    const std::tuple<const char*, const char*> cases[] = {
        {"%TC%\\wincmd.ini", "C:\\TC\\wincmd.ini"},
        {"%END%\\x.ini", "D:\\\\x.ini"},
        {"%UNSET%\\x.ini", "%UNSET%\\x.ini"},
        {"%HALF\\x.ini", "x.ini"},
        {"C:\\%HALF", "C:"},
        {"%HALF", ""},
        {"a%TC%\\x", "a%TC%\\x"},
        {"%TC%b\\x", "x"},
        {"\\\\srv\\%TC%\\\\x\\", "\\\\srv\\C:\\TC\\\\x\\"},
        {"%\\x", "%\\x"},
        {"%%\\x", "%%\\x"},
        {"%a%b%\\x", "odd\\x"},
        {"", ""},
    };
    for (const auto& [path, expected] : cases) {
        EXPECT_EQ(ExpandPathVariables(path, environment), expected) << path;
    }
}

TEST(Paths, FileExistsAndVersion) {
    MemoryFileSystem files;
    files.Put("C:\\a.ini", "");
    files.Put("\\\\srv\\a.ini", "");
    EXPECT_TRUE(FileExists("C:\\a.ini", files));
    EXPECT_FALSE(FileExists("C:\\a.ini", files, true));
    EXPECT_TRUE(FileExists("\\\\srv\\a.ini", files, true));
    EXPECT_FALSE(FileExists("\\\\srv\\b.ini", files, true));
    EXPECT_EQ(VersionText(1, 2, 3, " beta"), "1.23 beta");
}

}  // namespace
}  // namespace tamarind
