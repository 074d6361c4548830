// The real disk, in a temporary folder.
#include "core/files/FileSystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "core/files/Leftovers.h"
#include "core/files/PathRules.h"
#include "core/ini/IniFiles.h"

#if defined(_WIN32)
#include "tests/OnWine_win32.h"
#endif

namespace tamarind {
namespace {

namespace fs = std::filesystem;

#if defined(_WIN32)
constexpr const char* kShell = "start /unix /bin/sh /";
bool HasShell() {
    return IsOnWine();
}
#else
constexpr const char* kShell = "sh /";
bool HasShell() {
    return true;
}
#endif

// Under Wine a folder that the system below knows by the same path.
fs::path TemporaryFolder() {
    const fs::path below = "Z:/tmp";
    return fs::is_directory(below) ? below : fs::temp_directory_path();
}

class DiskTest : public testing::Test {
protected:
    DiskTest() { fs::create_directories(m_folder / "folder"); }
    ~DiskTest() override {
        if (!m_cleanUp.empty()) {
            RunShell(m_cleanUp);
        }
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            if (entry.is_regular_file()) {
                fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
            }
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
    std::string BytesOf(const std::string& path) { return m_disk.Read(path, 1'000'000).bytes; }

    void Put(const char* name, const std::string& bytes) {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
    }

    // Runs shell commands in the test's folder: under Wine the system below makes what Windows
    // programs cannot. False if they fail or there is no such system.
    bool RunShell(const std::string& commands) {
        const fs::path result = m_folder / "result.txt";
        fs::remove(result);
        Put("commands.sh", "cd \"${0%/*}\"; (" + commands + ") >/dev/null 2>&1\n" +
                               "echo $? >result; mv result result.txt");
        const std::string script = m_folder.relative_path().generic_string() + "/commands.sh";
        int status = std::system((kShell + script).c_str());
        for (int wait = 0; status == 0 && wait < 500 && !fs::exists(result); ++wait) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        status = -1;
        std::ifstream(result) >> status;
        fs::remove(m_folder / "commands.sh");
        return status == 0;
    }
    const fs::path m_folder =
        TemporaryFolder() / ("tamarind_disk_test_" + std::to_string(std::random_device()()));
    DiskFileSystem m_disk;
    std::string m_cleanUp;  // shell commands for the end
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
    Put("read_only.ini", "old");
    fs::permissions(m_folder / "read_only.ini", fs::perms::owner_read | fs::perms::group_read);
    for (const auto& [name, error] : {std::pair("folder", FileError::IsFolder),
                                      {"none/x.ini", FileError::FolderMissing},
                                      {"read_only.ini", FileError::ReadOnly}}) {
        EXPECT_EQ(m_disk.Replace(PathOf(name), "new", Backup::Yes), error) << name;
        EXPECT_EQ(m_disk.CheckReplace(PathOf(name)), error) << name;
    }
    EXPECT_EQ(m_disk.Read(PathOf("folder"), 1000).error, FileError::IsFolder);
    EXPECT_FALSE(m_disk.Stamp(PathOf("folder")));
    EXPECT_NE(m_disk.Read(PathOf("none/x.ini"), 1000).error, FileError::None);
    EXPECT_EQ(BytesOf(PathOf("read_only.ini")), "old");
    EXPECT_EQ(CountFiles("read_only") + CountFiles("folder"), 2);
}

TEST_F(DiskTest, BackupsAndLeftovers) {
    const std::string path = PathOf("x.ini");
    Put("x.ini", "first");
    Put("x.ini.~new-99-0123456789abcdef", "left by a crash");
    Put("x.ini.~new-99-0123456789abcdef.txt", "of somebody else");
    EXPECT_EQ(m_disk.CheckReplace(path), FileError::None);
    EXPECT_EQ(m_disk.Replace(path, "second", Backup::Yes), FileError::None);
    EXPECT_EQ(m_disk.Replace(path, "third", Backup::Yes), FileError::None);
    EXPECT_EQ(CountFiles("x.ini"), 3);  // with the folder of the backups
    const std::vector<BackupFile> backups = m_disk.ListBackups(path);
    ASSERT_EQ(backups.size(), 2U);
    EXPECT_EQ(BytesOf(backups[0].path), "second");
    EXPECT_EQ(BytesOf(backups[1].path), "first");
    EXPECT_TRUE(backups[1].isFirst);
    EXPECT_TRUE(
        fs::exists(m_folder / "x.ini backups" / ("x (first, " + backups[1].date + ").ini")));
    // No folder can be made for the backups.
    Put("y.ini", "old");
    Put("y.ini backups", "a file");
    EXPECT_NE(m_disk.Replace(PathOf("y.ini"), "new", Backup::Yes), FileError::None);
    EXPECT_EQ(BytesOf(PathOf("y.ini")), "old");
    EXPECT_EQ(CountFiles("y.ini"), 2);
    // The next read finds a file whose replacement has stopped halfway.
    fs::rename(path, LeftoverPath(path, LeftoverKind::Old, "third"));
    EXPECT_EQ(BytesOf(path), "third");
}

// The system takes such names for other files than their user sees, or for none.
TEST_F(DiskTest, WhatIsNoFileIsNotTouched) {
    Put("x.ini", "[A]");
    Put("x.ini.~new-99-0123456789abcdef", "of a save that is going on");
    const std::string path = PathOf("NUL");
    EXPECT_EQ(m_disk.Read(path, 1000).error, FileError::BadName);
    EXPECT_EQ(m_disk.Replace(path, "new", Backup::Yes), FileError::BadName);
    EXPECT_EQ(m_disk.Exchange(path, "new", {}, Backup::Yes).error, FileError::BadName);
    EXPECT_EQ(m_disk.CheckReplace(path), FileError::BadName);
    EXPECT_EQ(m_disk.MakeFolder(path), FileError::BadName);
    EXPECT_FALSE(m_disk.Stamp(path));
    EXPECT_TRUE(m_disk.ListBackups(path).empty());
    EXPECT_EQ(CountFiles(""), 3);
    for (const char* name : {"*", "x?ini", "x.in<", "x.ini:stream", "NUL", "nul.txt", "COM1 ",
                             "aux.ini/x.ini", "LPT\u00B9.x", "CONOUT$", "x\ti", "\"x\"", "a|b",
                             "\\\\.\\C:", "//./x", "\\\\?\\C:\\x*", "CC:\\x", "C:\\a:b"}) {
        EXPECT_FALSE(CanBeFile(name)) << name;
    }
    for (const char* path :
         {"\\\\?\\C:\\x.ini", "C:x.ini", "C:/nully/com10", "\\\\server\\x", "x y"}) {
        EXPECT_TRUE(CanBeFile(path)) << path;
    }
}

TEST_F(DiskTest, LinksStayLinks) {
    if (!HasShell()) {
        GTEST_SKIP() << "only under Wine: the system below makes the links";
    }
    if (!RunShell("printf old >target.ini; ln -s target.ini soft.ini; printf longer >a.ini;"
                  "ln a.ini b.ini; ln -s folder other; ln -s none.ini dangling.ini")) {
        GTEST_SKIP() << "there is no system that makes links";
    }
    m_cleanUp = "find . -type l -delete";
    for (const char* name : {"soft.ini", "a.ini", "other/new.ini"}) {
        EXPECT_EQ(m_disk.Replace(PathOf(name), "new", Backup::Yes), FileError::None) << name;
    }
    EXPECT_TRUE(RunShell("test -L soft.ini && test -L other && test a.ini -ef b.ini"));
    for (const char* name : {"target.ini", "b.ini", "folder/new.ini"}) {
        EXPECT_EQ(BytesOf(PathOf(name)), "new") << name;
    }
    EXPECT_EQ(BytesOf(m_disk.ListBackups(PathOf("soft.ini")).at(0).path), "old");
    EXPECT_EQ(BytesOf(m_disk.ListBackups(PathOf("a.ini")).at(0).path), "longer");
    EXPECT_EQ(CountFiles("target.ini") + CountFiles("a.ini"), 4);
#if !defined(_WIN32)
    // Wine does not show such links to programs.
    EXPECT_EQ(m_disk.Replace(PathOf("dangling.ini"), "new"), FileError::NotFound);
    EXPECT_TRUE(RunShell("test -L dangling.ini"));
#endif
}

TEST_F(DiskTest, FullAndReadOnlyDisks) {
    if (!HasShell()) {
        GTEST_SKIP() << "only under Wine: the system below mounts the disk";
    }
    if (!RunShell("mkdir small && mount -t tmpfs -o size=128k tmpfs small")) {
        GTEST_SKIP() << "mounting a small disk is not allowed here";
    }
    m_cleanUp = "umount small";
    const std::string path = PathOf("small/x.ini");
    const std::string old(50'000, 'o');
    ASSERT_EQ(m_disk.Replace(path, old), FileError::None);
    EXPECT_EQ(m_disk.Replace(path, std::string(90'000, 'n'), Backup::Yes), FileError::DiskFull);
    EXPECT_TRUE(BytesOf(path) == old);
    EXPECT_TRUE(RunShell("test $(find small -type f | wc -l) = 1 && mount -o remount,ro small"));
    EXPECT_EQ(m_disk.CheckReplace(path), FileError::AccessDenied);
    EXPECT_EQ(m_disk.Replace(path, "new", Backup::Yes), FileError::AccessDenied);
    EXPECT_TRUE(BytesOf(path) == old);
}

TEST_F(DiskTest, CopiesOfTheProgramLoseNoKeyOfEachOther) {
    constexpr int kSaves = 25;
    const std::string path = PathOf("x.ini");
    const auto saveKeys = [&path](const std::string& name) {
        DiskFileSystem disk;
        IniFiles files(disk);
        for (int key = 0; key < kSaves; ++key) {
            ProfileTransaction transaction(files, path);
            transaction.SetValue("A", name + std::to_string(key), "1");
            EXPECT_TRUE(transaction.Commit().Succeeded());
        }
    };
    std::thread other(saveKeys, "x");
    saveKeys("y");
    other.join();
    const std::string bytes = BytesOf(path);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '='), 2 * kSaves);
}

}  // namespace
}  // namespace tamarind
