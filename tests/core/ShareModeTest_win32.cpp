// Files that another process holds, with every share mode.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "core/files/FileSystem.h"
#include "core/system/UniqueHandle_win32.h"

namespace tamarind {
namespace {

// A process that runs nothing: it only holds what is handed over to it.
class OtherProcess {
public:
    OtherProcess() {
        wchar_t program[MAX_PATH] = L"";
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        CreateProcessW(program, nullptr, nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                       nullptr, &startup, &m_process);
    }
    ~OtherProcess() {
        TerminateProcess(m_process.hProcess, 0);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    bool TakeOver(UniqueFile file) {
        return DuplicateHandle(GetCurrentProcess(), file.Get(), m_process.hProcess, &m_held, 0,
                               FALSE, DUPLICATE_SAME_ACCESS) != 0;
    }
    void LetGo() const {
        HANDLE back = nullptr;
        DuplicateHandle(m_process.hProcess, m_held, GetCurrentProcess(), &back, 0, FALSE,
                        DUPLICATE_SAME_ACCESS | DUPLICATE_CLOSE_SOURCE);
        CloseHandle(back);
    }

private:
    PROCESS_INFORMATION m_process = {};
    HANDLE m_held = nullptr;
};

class ShareModeTest : public testing::Test {
protected:
    ShareModeTest() {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~ShareModeTest() override { std::filesystem::remove_all(m_folder); }

    UniqueFile Open(DWORD access, DWORD shareMode) const {
        return UniqueFile(CreateFileW((m_folder / "x.ini").c_str(), access, shareMode, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    }

    const std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / "tamarind_share_mode_test";
    const std::string m_path = (m_folder / "x.ini").string();
    DiskFileSystem m_disk;
};

TEST_F(ShareModeTest, WhoeverHoldsTheFileItStaysWhole) {
    OtherProcess holder;
    for (const DWORD access : {GENERIC_READ, GENERIC_READ | GENERIC_WRITE}) {
        for (DWORD shareMode = 0; shareMode < 8; ++shareMode) {
            SCOPED_TRACE(testing::Message() << "access " << access << ", shares " << shareMode);
            const bool sharesReading = (shareMode & FILE_SHARE_READ) != 0;
            const bool sharesDeleting = (shareMode & FILE_SHARE_DELETE) != 0;
            ASSERT_EQ(m_disk.Replace(m_path, "old"), FileError::None);
            ASSERT_TRUE(holder.TakeOver(Open(access, shareMode)));
            // Who may write may have written half of it.
            const bool isReadable = sharesReading && access == GENERIC_READ;
            EXPECT_EQ(m_disk.Read(m_path, 10).error,
                      isReadable ? FileError::None : FileError::InUse);
            const FileError error = m_disk.Replace(m_path, "new", Backup::Yes);
            EXPECT_EQ(error, isReadable && sharesDeleting ? FileError::None : FileError::InUse);
            holder.LetGo();
            EXPECT_EQ(m_disk.Read(m_path, 10).bytes, error == FileError::None ? "new" : "old");
            const auto files = std::filesystem::directory_iterator(m_folder);
            EXPECT_LE(std::distance(begin(files), end(files)), 2);  // with the backups
        }
    }
}

}  // namespace
}  // namespace tamarind
