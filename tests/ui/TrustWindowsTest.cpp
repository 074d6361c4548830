#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/shell/ShellIds.h"
#include "ui/shell/WindowPrompts.h"
#include "ui/shell/frmRestoreBackup.h"

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
        language.text = [this](std::uint16_t number) { return Widen(world.session->Text(number)); };
        prompts.SetOwner(window->Handle());
        prompts.SetLanguage(language);
    }

    bool Resolve(std::vector<ValueConflict>& conflicts, const std::function<void()>& actions) {
        bool isResolved = false;
        Show(
            L"frmConflicts", [&] { isResolved = prompts.ResolveConflicts(conflicts); }, actions);
        return isResolved;
    }
    void ShowBackups(const std::function<void()>& actions) {
        frmRestoreBackup restore(*world.session, language);
        Show(
            L"frmRestoreBackup", [&] { restore.Show(window->Handle()); }, actions);
    }

    HWND In(int id) const { return FindIn(dialog, id); }
    LRESULT SendTo(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(In(id), message, wParam, lParam);
    }
    void Click(int id) const { SendTo(id, BM_CLICK); }
    bool IsOn(int id) const { return IsWindowEnabled(In(id)); }
    void SelectRow(int list, int row) const {
        LVITEMW item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendTo(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    void DoubleClick(int list, int row) const {
        RECT label{LVIR_LABEL, 0, 0, 0};
        SendTo(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&label));
        SendTo(list, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(label.left + 5, label.top + 5));
    }
    std::string Cell(int list, int row, int column) const {
        wchar_t text[300] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        SendTo(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return Narrow(item.pszText);
    }
    // "key: mine | theirs" for each row.
    Strings CellRows(int list) const {
        Strings rows;
        for (int row = 0; row < SendTo(list, LVM_GETITEMCOUNT); ++row) {
            rows.push_back(Cell(list, row, 0) + ": " + Cell(list, row, 1) + " | " +
                           Cell(list, row, 2));
        }
        return rows;
    }
    LONG ColumnsOf(int list) const {
        LONG width = 0;
        for (WPARAM column = 0; column < 3; ++column) {
            width += static_cast<LONG>(SendTo(list, LVM_GETCOLUMNWIDTH, column));
        }
        return width;
    }
    static LONG ClientWidthOf(HWND handle) {
        RECT area{};
        GetClientRect(handle, &area);
        return area.right;
    }

    DialogLanguage language;
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
        {[] {}, "000"},
        {[&] { SendTo(kConflictList, WM_KEYDOWN, VK_SPACE); }, "100"},
        {[&] {
             SelectRow(kConflictList, 1);
             Click(IDC_CONFLICTS_OPTTHEIRS);
             SelectRow(kConflictList, 2);
             EXPECT_EQ(SendTo(IDC_CONFLICTS_OPTMINE, BM_GETCHECK), BST_CHECKED);
             EXPECT_EQ(SendTo(IDC_CONFLICTS_OPTTHEIRS, BM_GETCHECK), BST_UNCHECKED);
         },
         "010"},
        {[&] {
             Click(IDC_CONFLICTS_CMDTAKEALL);
             EXPECT_EQ(SendTo(IDC_CONFLICTS_OPTTHEIRS, BM_GETCHECK), BST_CHECKED);
             DoubleClick(kConflictList, 1);
         },
         "101"},
        {[&] {
             Click(IDC_CONFLICTS_CMDTAKEALL);
             Click(IDC_CONFLICTS_CMDKEEPALL);
             SelectRow(kConflictList, 2);
             SendTo(kConflictList, WM_KEYDOWN, VK_SPACE);
         },
         "001"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.takesTheirs);
        for (const int button : {IDOK, IDCANCEL}) {
            std::vector<ValueConflict> conflicts = before;
            EXPECT_EQ(Resolve(conflicts,
                              [&] {
                                  row.actions();
                                  Click(button);
                              }),
                      button == IDOK);
            for (std::size_t at = 0; at < conflicts.size(); ++at) {
                EXPECT_EQ(conflicts[at].takesTheirs,
                          button == IDOK ? row.takesTheirs[at] == '1' : before[at].takesTheirs);
            }
        }
    }
}

TEST_F(TrustWindowsTest, ConflictsMarkTheValueThatStays) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2"}};
    Resolve(conflicts, [&] {
        EXPECT_EQ(TextOf(dialog), "Changed by Another Program");
        EXPECT_FALSE(IsWindowEnabled(window->Handle()));
        const std::string mine = Cell(kConflictList, 0, 1);
        const std::string mark = mine.substr(0, mine.size() - 3);
        EXPECT_FALSE(mark.empty());
        const std::string none = "\u2014";
        EXPECT_EQ(CellRows(kConflictList),
                  (Strings{"[A] a: " + mark + "a=1 | a=2", "[A] b: " + mark + none + " | b=2"}));
        Click(IDC_CONFLICTS_CMDTAKEALL);
        EXPECT_EQ(CellRows(kConflictList), (Strings{"[A] a: a=1 | " + mark + "a=2",
                                                    "[A] b: " + none + " | " + mark + "b=2"}));
    });
}

TEST_F(TrustWindowsTest, ControlsAndColumnsFollowTheWindow) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=" + std::string(900, 'x'), "a=2"}};
    Resolve(conflicts, [&] {
        const HWND list = In(kConflictList);
        const LONG right = BoundsOf(list).right;
        const LONG top = BoundsOf(In(IDOK)).top;
        const LONG columns = ColumnsOf(kConflictList);
        EXPECT_GE(columns, ClientWidthOf(list) - 2);
        EXPECT_LE(columns, ClientWidthOf(list));
        EXPECT_GT(SendTo(kConflictList, LVM_GETCOLUMNWIDTH, 1), columns / 2);
        MINMAXINFO limits{};
        SendMessageW(dialog, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
        const RECT bounds = BoundsOf(dialog);
        EXPECT_EQ(limits.ptMinTrackSize.x, bounds.right - bounds.left);
        EXPECT_EQ(limits.ptMinTrackSize.y, bounds.bottom - bounds.top);
        SetWindowPos(dialog, nullptr, 0, 0, static_cast<int>(bounds.right - bounds.left + 50),
                     static_cast<int>(bounds.bottom - bounds.top + 30), SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(BoundsOf(list).right, right + 50);
        EXPECT_EQ(BoundsOf(In(IDOK)).top, top + 30);
        EXPECT_EQ(ColumnsOf(kConflictList) - columns, 50);
    });
}

TEST_F(TrustWindowsTest, BackupsShowWhatDiffersAndComeBack) {
    const std::string middle = "[Configuration]\r\nPanelsVertical=0\r\n";
    world.disk.ReplaceWithBackup(SessionWorld::kWincmd, middle);
    world.disk.ReplaceWithBackup(SessionWorld::kWincmd,
                                 "[Configuration]\r\nPanelsVertical=2\r\nMore=1\r\n");
    ShowBackups([&] {
        EXPECT_EQ(TextOf(In(IDC_RESTORE_TXTPATH)), SessionWorld::kWincmd);
        EXPECT_FALSE(IsWindowEnabled(window->Handle()));
        EXPECT_FALSE(IsOn(IDOK));
        EXPECT_FALSE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        ASSERT_EQ(SendTo(kBackupList, LVM_GETITEMCOUNT), 2);
        EXPECT_EQ(Cell(kBackupList, 0, 1), std::to_string(middle.size()));
        EXPECT_EQ(Cell(kBackupList, 0, 2), "2");
        EXPECT_EQ(Cell(kBackupList, 1, 2), "3");
        SYSTEMTIME time{};
        time.wYear = 2026;
        time.wMonth = 11;
        time.wDay = 21;
        wchar_t day[80] = L"";
        GetDateFormatEx(nullptr, DATE_SHORTDATE, &time, nullptr, day, ARRAYSIZE(day), nullptr);
        EXPECT_EQ(Cell(kBackupList, 0, 0).find(Narrow(day)), 0U);

        SelectRow(kBackupList, 1);
        EXPECT_EQ(SendTo(kDifferenceList, LVM_GETITEMCOUNT), 3);
        SelectRow(kBackupList, 0);
        EXPECT_EQ(CellRows(kDifferenceList),
                  (Strings{"[Configuration] PanelsVertical: PanelsVertical=0 | PanelsVertical=2",
                           "[Configuration] More: \u2014 | More=1"}));
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::InUse);
        Click(IDOK);
        EXPECT_TRUE(IsWindowVisible(dialog));
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        Click(IDOK);
        EXPECT_FALSE(IsWindowVisible(dialog));
    });
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), middle);
}

TEST_F(TrustWindowsTest, AFileWithoutBackupsIsToldApart) {
    world.disk.ReplaceWithBackup(SessionWorld::kWincmd, "[Configuration]\r\n");
    ShowBackups([&] {
        SelectRow(kBackupList, 0);
        EXPECT_TRUE(IsOn(IDOK));
        const HWND files = In(IDC_RESTORE_CBOFILE);
        const LRESULT last = SendMessageW(files, CB_GETCOUNT, 0, 0) - 1;
        SendMessageW(files, CB_SETCURSEL, static_cast<WPARAM>(last), 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_RESTORE_CBOFILE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(files));
        EXPECT_EQ(TextOf(In(IDC_RESTORE_TXTPATH)), SessionWorld::kWincmdData);
        EXPECT_FALSE(IsWindowVisible(In(kBackupList)));
        EXPECT_TRUE(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)));
        EXPECT_EQ(SendTo(kDifferenceList, LVM_GETITEMCOUNT), 0);
        EXPECT_FALSE(IsOn(IDOK));
    });
}

}  // namespace
}  // namespace tamarind
