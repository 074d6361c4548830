#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/changes/ChangesIds.h"
#include "ui/changes/frmRestoreBackup.h"
#include "ui/main/WindowPrompts.h"

namespace tamarind {
namespace {

constexpr int kConflictList = IDC_CONFLICTS_LSTCONFLICTS;
constexpr int kBackupList = IDC_RESTORE_LSTBACKUPS;
constexpr int kDifferenceList = IDC_RESTORE_LSTDIFFERENCES;

// The windows that ask before values get lost, over the main window.
class TrustWindowsTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        Start();
        prompts.SetOwner(window->Handle());
        prompts.SetStyle(window->Style());
    }

    bool Resolve(std::vector<ValueConflict>& conflicts, const std::function<void()>& actions) {
        bool isResolved = false;
        Show(L"frmConflicts", actions, [&] { isResolved = prompts.ResolveConflicts(conflicts); });
        return isResolved;
    }
    void ShowBackups(const std::function<void()>& actions) {
        frmRestoreBackup restore(world.session->TargetFile(), window->Style());
        Show(L"frmRestoreBackup", actions, [&] { restore.Show(window->Handle()); });
    }

    LRESULT SendTo(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(In(id), message, wParam, lParam);
    }
    void SelectRow(int list, int row) const {
        ListView_SetItemState(In(list), row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    }
    void SelectFile(WPARAM number, const char* path) const {
        SendTo(IDC_RESTORE_CBOFILE, CB_SETCURSEL, number);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_RESTORE_CBOFILE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(In(IDC_RESTORE_CBOFILE)));
        EXPECT_EQ(TextOf(In(IDC_RESTORE_TXTPATH)), path);
    }
    // "key: mine | theirs" for each row.
    Strings CellRows(int list) const {
        Strings rows;
        for (const std::string& key : RowsIn(In(list))) {
            const int row = static_cast<int>(rows.size());
            rows.push_back(key + ": " + CellIn(In(list), row, 1) + " | " +
                           CellIn(In(list), row, 2));
        }
        return rows;
    }

    WindowPrompts prompts{L"Test"};
};

TEST_F(TrustWindowsTest, ConflictsEndAsTheUserChooses) {
    const std::vector<ValueConflict> before = {
        {"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2", true}, {"[A] c", ";c=1", ""}};
    struct Case {
        std::function<void()> actions;
        std::string takesTheirs;
    };
    const Case cases[] = {
        {[&] { SendTo(kConflictList, WM_KEYDOWN, VK_SPACE); }, "100"},
        {[&] {
             SelectRow(kConflictList, 1);
             Click(IDC_CONFLICTS_OPTTHEIRS);
             SelectRow(kConflictList, 2);
             EXPECT_TRUE(IsChecked(IDC_CONFLICTS_OPTMINE));
             EXPECT_FALSE(IsChecked(IDC_CONFLICTS_OPTTHEIRS));
         },
         "010"},
        {[&] {
             Click(IDC_CONFLICTS_CMDTAKEALL);
             EXPECT_TRUE(IsChecked(IDC_CONFLICTS_OPTTHEIRS));
             SelectRow(kConflictList, 1);
             SendTo(kConflictList, WM_KEYDOWN, VK_SPACE);
         },
         "101"},
        {[&] {
             Click(IDC_CONFLICTS_CMDTAKEALL);
             Click(IDC_CONFLICTS_CMDKEEPALL);
         },
         "000"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.takesTheirs);
        std::vector<ValueConflict> conflicts = before;
        for (const int button : {IDCANCEL, IDOK}) {
            const auto act = [&] {
                row.actions();
                Click(button);
            };
            EXPECT_EQ(Resolve(conflicts, act), button == IDOK);
            std::string taken;
            for (const ValueConflict& conflict : conflicts) {
                taken += conflict.takesTheirs ? '1' : '0';
            }
            EXPECT_EQ(taken, button == IDOK ? row.takesTheirs : "010");
        }
    }
}

// While the question is open the window is not closed; Windows may end, but not over what is
// pending.
TEST_F(TrustWindowsTest, NothingClosesBehindAnOpenQuestion) {
    world.session->Selection().ShowKeyDetails(0);
    world.session->Commands().SetValue("mine");
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=theirs\r\n");
    bool isEnded = false;
    world.prompts.onConflicts = [&] {
        std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}};
        isEnded = !Resolve(conflicts, [&] {
            SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
            EXPECT_TRUE(IsWindow(window->Handle()) && IsWindowVisible(dialog));
            EXPECT_FALSE(SendMessageW(window->Handle(), WM_QUERYENDSESSION, 0, 0));
        });
    };
    world.prompts.cancelsConflicts = true;
    EXPECT_FALSE(world.session->TargetFile().SaveToSettingsFile());
    EXPECT_TRUE(isEnded);
    EXPECT_TRUE(world.session->TargetFile().IsModified());
    SendMessageW(window->Handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(IsWindow(window->Handle()));
}

// A file that is still being written is looked at again, without the user doing anything.
TEST_F(TrustWindowsTest, AYoungFileIsLookedAtAgain) {
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=7\r\n");
    const auto isTaken = [&] { return world.Rows()[0] == "PanelsVertical=7"; };
    world.disk.reads = 0;
    SendMessageW(window->Handle(), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_TRUE(PumpUntil([&] { return world.disk.reads > 0; }));
    EXPECT_FALSE(isTaken());
    world.disk.Wait(10);
    EXPECT_TRUE(PumpUntil(isTaken));
}

TEST_F(TrustWindowsTest, ConflictsMarkTheValueThatStays) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2"}};
    Resolve(conflicts, [&] {
        EXPECT_FALSE(IsWindowEnabled(window->Handle()));
        const std::string mine = CellIn(In(kConflictList), 0, 1);
        const std::string mark = mine.substr(0, mine.size() - 3);
        EXPECT_FALSE(mark.empty());
        EXPECT_EQ(CellRows(kConflictList),
                  (Strings{"[A] a: " + mark + "a=1 | a=2", "[A] b: " + mark + "\u2014 | b=2"}));
        Click(IDC_CONFLICTS_CMDTAKEALL);
        EXPECT_EQ(CellRows(kConflictList),
                  (Strings{"[A] a: a=1 | " + mark + "a=2", "[A] b: \u2014 | " + mark + "b=2"}));
    });
}

TEST_F(TrustWindowsTest, ControlsAndColumnsFollowTheWindow) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=" + std::string(900, 'x'), "a=2"}};
    Resolve(conflicts, [&] {
        const RECT bounds = BoundsOf(dialog);
        const LONG top = BoundsOf(In(IDOK)).top;
        SetWindowPos(dialog, nullptr, 0, 0, static_cast<int>(bounds.right - bounds.left + 50),
                     static_cast<int>(bounds.bottom - bounds.top + 30), SWP_NOMOVE | SWP_NOZORDER);
        ExpectNoOverlaps(dialog);
        EXPECT_EQ(BoundsOf(In(IDOK)).top, top + 30);
        RECT area{};
        GetClientRect(In(kConflictList), &area);
        int columns = 0;
        for (const int column : {0, 1, 2}) {
            columns += ListView_GetColumnWidth(In(kConflictList), column);
        }
        EXPECT_TRUE(columns >= area.right - 2 && columns <= area.right) << columns;
    });
}

TEST_F(TrustWindowsTest, BackupsShowWhatDiffersAndComeBack) {
    const std::string middle = "[Configuration]\r\nPanelsVertical=0\r\n";
    world.disk.Replace(SessionWorld::kWincmd, middle, Backup::Yes);
    world.disk.Replace(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=2\r\nMore=1\r\n",
                       Backup::Yes);
    ShowBackups([&] {
        EXPECT_FALSE(IsWindowEnabled(window->Handle()));
        EXPECT_EQ(GetFocus(), In(kBackupList));
        EXPECT_EQ(SelectedIn(In(kBackupList)), 0);
        EXPECT_EQ(CellRows(kDifferenceList).size(), 2U);
        EXPECT_TRUE(IsOn(IDOK));
        const Strings backups = CellRows(kBackupList);
        ASSERT_EQ(backups.size(), 2U);
        EXPECT_NE(backups[0].find("26"), std::string::npos);  // of the date, however it is written
        EXPECT_TRUE(backups[0].ends_with(": " + std::to_string(middle.size()) + " | 2"));
        EXPECT_TRUE(backups[1].ends_with(" | 3"));
        SelectRow(kBackupList, 1);
        EXPECT_EQ(CellRows(kDifferenceList).size(), 3U);
        SelectRow(kBackupList, 0);
        EXPECT_EQ(CellRows(kDifferenceList),
                  (Strings{"[Configuration] PanelsVertical: PanelsVertical=0 | PanelsVertical=2",
                           "[Configuration] More: \u2014 | More=1"}));

        // Another file, which has no backups, and back again.
        SelectFile(1, SessionWorld::kWincmdData);
        EXPECT_FALSE(IsWindowVisible(In(kBackupList)));
        EXPECT_TRUE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        EXPECT_EQ(CellRows(kDifferenceList), Strings{});
        EXPECT_FALSE(IsOn(IDOK));
        SelectFile(0, SessionWorld::kWincmd);
        EXPECT_FALSE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        EXPECT_EQ(SelectedIn(In(kBackupList)), 0);
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::InUse);
        Click(IDOK);
        EXPECT_TRUE(IsWindowVisible(dialog));
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        Click(IDOK);
        EXPECT_FALSE(IsWindowVisible(dialog));
    });
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), middle);
}

}  // namespace
}  // namespace tamarind
