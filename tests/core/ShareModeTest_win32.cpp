// Files that another handle holds, with every share mode.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "core/FileSystem.h"
#include "core/UniqueHandle_win32.h"

namespace tamarind {
namespace {

class ShareModeTest : public testing::Test {
protected:
    ShareModeTest() {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~ShareModeTest() override { std::filesystem::remove_all(m_folder); }

    UniqueFile Hold(DWORD access, DWORD shareMode) const {
        return UniqueFile(CreateFileW((m_folder / "x.ini").c_str(), access, shareMode, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    }

    const std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / "tamarind_share_mode_test";
    const std::string m_path = (m_folder / "x.ini").string();
    DiskFileSystem m_disk;
};

TEST_F(ShareModeTest, WhoeverHoldsTheFileItStaysWhole) {
    for (const DWORD access : {GENERIC_READ, GENERIC_READ | GENERIC_WRITE}) {
        for (DWORD shareMode = 0; shareMode < 8; ++shareMode) {
            SCOPED_TRACE(testing::Message() << "access " << access << ", shares " << shareMode);
            const bool sharesReading = (shareMode & FILE_SHARE_READ) != 0;
            const bool sharesDeleting = (shareMode & FILE_SHARE_DELETE) != 0;
            ASSERT_EQ(m_disk.Replace(m_path, "old"), FileError::None);
            UniqueFile holder = Hold(access, shareMode);
            ASSERT_TRUE(holder);
            EXPECT_EQ(m_disk.Read(m_path, 10).error,
                      sharesReading ? FileError::None : FileError::InUse);
            const FileError error = m_disk.ReplaceWithBackup(m_path, "new");
            if (sharesReading || !sharesDeleting) {  // otherwise versions of Windows differ
                EXPECT_EQ(error, sharesDeleting ? FileError::None : FileError::InUse);
            }
            holder.Reset();
            EXPECT_EQ(m_disk.Read(m_path, 10).bytes, error == FileError::None ? "new" : "old");
            const auto files = std::filesystem::directory_iterator(m_folder);
            EXPECT_LE(std::distance(begin(files), end(files)), 2);  // with the backups
        }
    }
}

TEST_F(ShareModeTest, AHolderThatGoesIsWaitedFor) {
    ASSERT_EQ(m_disk.Replace(m_path, "old"), FileError::None);
    UniqueFile holder = Hold(GENERIC_READ, 0);
    std::thread scanner([&holder] {
        Sleep(60);
        holder.Reset();
    });
    EXPECT_EQ(m_disk.ReplaceWithBackup(m_path, "new"), FileError::None);
    scanner.join();
    EXPECT_EQ(m_disk.Read(m_path, 10).bytes, "new");
}

}  // namespace
}  // namespace tamarind
