// The real disk, in a temporary folder.
#include "core/FileSystem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#if defined(_WIN32)
#include <share.h>

#include <cstdio>
#endif

namespace tamarind {
namespace {

namespace fs = std::filesystem;

class DiskTest : public testing::Test {
protected:
    DiskTest() {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder / "folder");
    }
    ~DiskTest() override {
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
        }
        fs::remove_all(m_folder);
    }

    std::string PathOf(const char* name) const {
        const std::u8string path = (m_folder / reinterpret_cast<const char8_t*>(name)).u8string();
        return {path.begin(), path.end()};
    }
    // Files whose names begin so: a temporary file stands beside the real one.
    int CountFiles(const std::string& name) const {
        int count = 0;
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            count += entry.path().filename().string().rfind(name, 0) == 0 ? 1 : 0;
        }
        return count;
    }
    std::string BytesOf(const std::string& path) { return m_disk.Read(path, 1000).bytes; }

    fs::path m_folder = fs::temp_directory_path() / "tamarind_disk_test";
    DiskFileSystem m_disk;
};

TEST_F(DiskTest, WritesReplacesAndReads) {
    const std::string path = PathOf("tämarind 中.ini");
    const std::string bytes("a\r\n\0\x1A\xFF", 6);
    EXPECT_EQ(m_disk.Read(path, 1000).error, FileError::NotFound);
    EXPECT_FALSE(m_disk.Stamp(path));
    EXPECT_EQ(m_disk.Replace(path, "old"), FileError::None);
    EXPECT_EQ(m_disk.Replace(path, bytes), FileError::None);
    const FileContent content = m_disk.Read(path, 6);
    EXPECT_EQ(content.error, FileError::None);
    EXPECT_EQ(content.bytes, bytes);
    EXPECT_EQ(content.stamp.size, 6U);
    EXPECT_EQ(m_disk.Stamp(path), content.stamp);
    // The stamps are of the same clock.
    EXPECT_LT(content.stamp.modifiedTicks, m_disk.NowTicks() + 20'000'000);
    EXPECT_GT(content.stamp.modifiedTicks + 600'000'000, m_disk.NowTicks());
    EXPECT_EQ(m_disk.Read(path, 5).error, FileError::TooLarge);
    EXPECT_EQ(m_disk.Replace(path, ""), FileError::None);
    EXPECT_EQ(m_disk.Stamp(path)->size, 0U);
    EXPECT_EQ(CountFiles("t"), 1);
}

TEST_F(DiskTest, AFailedReplacementLeavesEverything) {
    const std::string folder = PathOf("folder");
    EXPECT_EQ(m_disk.Replace(folder, "new"), FileError::IsFolder);
    EXPECT_EQ(m_disk.Read(folder, 1000).error, FileError::IsFolder);
    EXPECT_FALSE(m_disk.Stamp(folder));

    const std::string missing = PathOf("none/x.ini");
    EXPECT_EQ(m_disk.Replace(missing, "new"), FileError::FolderMissing);
    EXPECT_NE(m_disk.Read(missing, 1000).error, FileError::None);

    const std::string readOnly = PathOf("read_only.ini");
    ASSERT_EQ(m_disk.Replace(readOnly, "old"), FileError::None);
    fs::permissions(m_folder / "read_only.ini", fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(m_disk.Replace(readOnly, "new"), FileError::ReadOnly);
    EXPECT_EQ(BytesOf(readOnly), "old");
    EXPECT_EQ(CountFiles("read_only"), 1);
    EXPECT_EQ(CountFiles("folder"), 1);
}

#if defined(_WIN32)
TEST_F(DiskTest, AFileInUseStays) {
    const std::string path = PathOf("locked.ini");
    ASSERT_EQ(m_disk.Replace(path, "old"), FileError::None);
    std::FILE* const lock = _fsopen(path.c_str(), "r+", _SH_DENYRW);
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(m_disk.Read(path, 1000).error, FileError::InUse);
    EXPECT_EQ(m_disk.Replace(path, "new"), FileError::InUse);
    std::fclose(lock);
    EXPECT_EQ(BytesOf(path), "old");
    EXPECT_EQ(CountFiles("locked"), 1);
}
#endif

}  // namespace
}  // namespace tamarind
