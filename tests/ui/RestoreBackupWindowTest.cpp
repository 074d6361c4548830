#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "ui/changes/ChangesIds.h"

namespace tamarind {
namespace {

constexpr int kBackups = IDC_RESTORE_LSTBACKUPS;
constexpr int kDifferences = IDC_RESTORE_LSTDIFFERENCES;

class RestoreBackupWindowTest : public MainWindowTest {
protected:
    void SelectFile(WPARAM number, const char* path) const {
        const HWND files = In(IDC_RESTORE_CBOFILE);
        SendMessageW(files, CB_SETCURSEL, number, 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_RESTORE_CBOFILE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(files));
        EXPECT_EQ(TextOf(In(IDC_RESTORE_TXTPATH)), path);
    }
};

TEST_F(RestoreBackupWindowTest, ShowsWhatDiffersAndPutsItBack) {
    Start();
    const std::string middle = "[Configuration]\r\nPanelsVertical=0\r\n";
    world.disk.Replace(SessionWorld::kWincmd, middle, Backup::Yes);
    world.disk.Replace(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=2\r\nMore=1\r\n",
                       Backup::Yes);
    const auto act = [&] {
        EXPECT_FALSE(IsWindowEnabled(Main()));
        EXPECT_EQ(GetFocus(), In(kBackups));
        EXPECT_EQ(SelectedIn(In(kBackups)), 0);
        EXPECT_EQ(Triples(kDifferences).size(), 2U);
        EXPECT_TRUE(IsOn(IDOK));
        const Strings backups = Triples(kBackups);
        ASSERT_EQ(backups.size(), 2U);
        EXPECT_NE(backups[0].find("26"), std::string::npos);  // of the date, however it is written
        EXPECT_TRUE(backups[0].ends_with(": " + std::to_string(middle.size()) + " | 2"));
        EXPECT_TRUE(backups[1].ends_with(" | 3"));
        SelectRow(kBackups, 1);
        EXPECT_EQ(Triples(kDifferences).size(), 3U);
        SelectRow(kBackups, 0);
        EXPECT_EQ(Triples(kDifferences),
                  (Strings{"[Configuration] PanelsVertical: PanelsVertical=0 | PanelsVertical=2",
                           "[Configuration] More: \u2014 | More=1"}));

        // Another file, which has no backups, and back again.
        SelectFile(1, SessionWorld::kWincmdData);
        EXPECT_FALSE(IsWindowVisible(In(kBackups)));
        EXPECT_TRUE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        EXPECT_EQ(Triples(kDifferences), Strings{});
        EXPECT_FALSE(IsOn(IDOK));
        SelectFile(0, SessionWorld::kWincmd);
        EXPECT_FALSE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        EXPECT_EQ(SelectedIn(In(kBackups)), 0);
        for (const FileError error : {FileError::InUse, FileError::None}) {
            world.disk.FailReplaces(SessionWorld::kWincmd, error);
            Click(IDOK);
            EXPECT_EQ(IsWindowVisible(dialog) != 0, error != FileError::None);
        }
    };
    Show(L"frmRestoreBackup", act, [&] { Do(Command::FileRestoreBackup); });
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), middle);
}

}  // namespace
}  // namespace tamarind
