// What files of Windows ask for: names of any length, and the consent of all who hold them.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "core/files/FileSystem.h"
#include "core/system/LongPath_win32.h"
#include "core/system/UniqueHandle_win32.h"

namespace tamarind {
namespace {

namespace fs = std::filesystem;

// Windows asks for the share mode of every handle, whichever process it belongs to.
TEST(ShareModeTest, WhoeverHoldsTheFileItStaysWhole) {
    const fs::path folder = fs::temp_directory_path() / "tamarind_share_mode_test";
    const std::string path = (folder / "x.ini").string();
    fs::remove_all(folder);
    fs::create_directories(folder);
    DiskFileSystem disk;
    for (const DWORD access : {GENERIC_READ, GENERIC_READ | GENERIC_WRITE}) {
        for (DWORD shareMode = 0; shareMode < 8; ++shareMode) {
            SCOPED_TRACE(testing::Message() << "access " << access << ", shares " << shareMode);
            const bool sharesReading = (shareMode & FILE_SHARE_READ) != 0;
            const bool sharesDeleting = (shareMode & FILE_SHARE_DELETE) != 0;
            ASSERT_EQ(disk.Replace(path, "old"), FileError::None);
            UniqueFile holder(CreateFileW((folder / "x.ini").c_str(), access, shareMode, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
            ASSERT_TRUE(holder);
            // Who may write may have written half of it.
            const bool isReadable = sharesReading && access == GENERIC_READ;
            EXPECT_EQ(disk.Read(path, 10).error, isReadable ? FileError::None : FileError::InUse);
            const FileError error = disk.Replace(path, "new", Backup::Yes);
            EXPECT_EQ(error, isReadable && sharesDeleting ? FileError::None : FileError::InUse);
            holder.Reset();
            EXPECT_EQ(disk.Read(path, 10).bytes, error == FileError::None ? "new" : "old");
            const auto files = fs::directory_iterator(folder);
            EXPECT_LE(std::distance(begin(files), end(files)), 2);  // with the backups
        }
    }
    fs::remove_all(folder);
}

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
