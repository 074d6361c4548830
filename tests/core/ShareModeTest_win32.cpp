// Files that somebody holds, with every share mode. Windows asks for those of every handle,
// whichever process it belongs to.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "core/files/FileSystem.h"
#include "core/system/UniqueHandle_win32.h"

namespace tamarind {
namespace {

namespace fs = std::filesystem;

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

}  // namespace
}  // namespace tamarind
