#include "core/files/Paths.h"

#include <gtest/gtest.h>

#include "tests/core/fakes/FakeEnvironment.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

TEST(Paths, SplitsAndJoins) {
    const struct {
        const char *path, *withBackslash, *folder, *name;
    } cases[] = {
        {"C:\\TC\\", "C:\\TC\\", "C:\\TC\\", ""},
        {"C:\\a\\b.ini", "C:\\a\\b.ini\\", "C:\\a\\", "b.ini"},
        {"b/c.ini", "b/c.ini\\", "", "b/c.ini"},
        {"", "\\", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(AddBackslash(c.path), c.withBackslash);
        EXPECT_EQ(FolderOfPath(c.path), c.folder);
        EXPECT_EQ(FileNameOfPath(c.path), c.name);
    }
}

TEST(Paths, ExpandsWholeSegments) {
    FakeEnvironment environment;
    environment.variables = {{"TC", "C:\\TC"}, {"END", "D:\\"}, {"", "wrong"}, {"a%b", "odd"}};
    const struct {
        const char *path, *expected;
    } cases[] = {
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
    for (const auto& c : cases) {
        EXPECT_EQ(ExpandPathVariables(c.path, environment), c.expected) << c.path;
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
