#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/changes/ChangesIds.h"

namespace tamarind {
namespace {

// A row of a list of three columns: "key: mine | theirs".
Strings TriplesIn(HWND list) {
    Strings rows = RowsIn(list);
    for (int row = 0; std::string & text : rows) {
        text += ": " + CellIn(list, row, 1) + " | " + CellIn(list, row, 2);
        ++row;
    }
    return rows;
}

// The question which values stay, over the main window.
class ConflictsWindowTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        Start();
    }
    bool Resolve(std::vector<ValueConflict>& conflicts, const std::function<void()>& actions) {
        bool isResolved = false;
        Show(L"frmConflicts", actions, [&] { isResolved = prompts.ResolveConflicts(conflicts); });
        return isResolved;
    }
    HWND List() const { return In(IDC_CONFLICTS_LSTCONFLICTS); }
    // Which cells have the mark of the value that stays, and the option of the selected row.
    std::string Choices(const std::string& mark) const {
        std::string choices;
        for (int row = 0; row < ListView_GetItemCount(List()); ++row) {
            for (const int column : {1, 2}) {
                choices += CellIn(List(), row, column).starts_with(mark) ? 'x' : '-';
            }
            choices += ' ';
        }
        EXPECT_NE(IsChecked(IDC_CONFLICTS_OPTMINE), IsChecked(IDC_CONFLICTS_OPTTHEIRS));
        return choices + (IsChecked(IDC_CONFLICTS_OPTMINE) ? "mine" : "theirs");
    }
};

TEST_F(ConflictsWindowTest, EndsAsTheUserChooses) {
    for (const int button : {IDCANCEL, IDOK}) {
        std::vector<ValueConflict> conflicts = {
            {"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2", true}, {"[A] c", ";c=1", ""}};
        const auto act = [&] {
            EXPECT_FALSE(IsWindowEnabled(Main()));
            const std::string mine = CellIn(List(), 0, 1);
            const std::string mark = mine.substr(0, mine.size() - 3);
            EXPECT_FALSE(mark.empty());
            EXPECT_EQ(TriplesIn(List()),
                      (Strings{"[A] a: " + mark + "a=1 | a=2", "[A] b: " + mark + "\u2014 | b=2",
                               "[A] c: " + mark + ";c=1 | \u2014"}));
            EXPECT_EQ(Choices(mark), "x- x- x- mine");
            SendMessageW(List(), WM_KEYDOWN, VK_SPACE, 0);
            EXPECT_EQ(Choices(mark), "-x x- x- theirs");
            SelectRow(List(), 1);
            EXPECT_EQ(Choices(mark), "-x x- x- mine");
            Click(IDC_CONFLICTS_OPTTHEIRS);
            EXPECT_EQ(Choices(mark), "-x -x x- theirs");
            Click(IDC_CONFLICTS_CMDKEEPALL);
            EXPECT_EQ(Choices(mark), "x- x- x- mine");
            Click(IDC_CONFLICTS_CMDTAKEALL);
            Click(IDC_CONFLICTS_OPTMINE);
            EXPECT_EQ(Choices(mark), "-x x- -x mine");
            Click(button);
        };
        EXPECT_EQ(Resolve(conflicts, act), button == IDOK);
        EXPECT_EQ(conflicts[0].takesTheirs, button == IDOK);
        EXPECT_EQ(conflicts[1].takesTheirs, button == IDCANCEL);
    }
}

// While the question is open the window is not closed; Windows may end, but not over what is
// pending.
TEST_F(ConflictsWindowTest, NothingClosesBehindIt) {
    world.session->Selection().Rows().ShowKeyDetails(0);
    world.session->Commands().SetValue("mine");
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=theirs\r\n");
    bool isEnded = false;
    world.prompts.onConflicts = [&] {
        std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}};
        isEnded = !Resolve(conflicts, [&] {
            SendMessageW(Main(), WM_CLOSE, 0, 0);
            EXPECT_TRUE(IsWindow(Main()) && IsWindowVisible(dialog));
            EXPECT_FALSE(SendMessageW(Main(), WM_QUERYENDSESSION, 0, 0));
        });
    };
    world.prompts.cancelsConflicts = true;
    EXPECT_FALSE(world.session->Settings().SaveToSettingsFile());
    EXPECT_TRUE(isEnded);
    EXPECT_TRUE(world.session->Settings().IsModified());
    SendMessageW(Main(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(IsWindow(Main()));
}

// The end of the question activates the main window, which is no reason to ask once more.
TEST_F(ConflictsWindowTest, PutOffItStaysAway) {
    world.session->Selection().Rows().ShowKeyDetails(0);
    world.session->Commands().SetValue("mine");
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=theirs\r\n");
    world.disk.Wait(10);
    world.prompts.cancelsConflicts = true;
    int asked = 0;
    world.prompts.onConflicts = [&] {
        std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}};
        Resolve(conflicts, [&] { Click(IDCANCEL); });
        ++asked;
    };
    SendMessageW(Main(), WM_ACTIVATE, WA_ACTIVE, 0);
    int rounds = 0;
    WaitUntil([&] { return asked > 0 && ++rounds == 20; });
    EXPECT_EQ(asked, 1);
}

TEST_F(ConflictsWindowTest, ControlsAndColumnsFollowItsSize) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=" + std::string(900, 'x'), "a=2"}};
    Resolve(conflicts, [&] {
        const LONG top = BoundsOf(In(IDOK)).top;
        Resize(dialog, WidthOf(dialog) + 50, HeightOf(dialog) + 30);
        ExpectNoOverlaps(dialog);
        EXPECT_EQ(BoundsOf(In(IDOK)).top, top + 30);
        int columns = 0;
        for (const int column : {0, 1, 2}) {
            columns += ListView_GetColumnWidth(List(), column);
        }
        const LONG room = ClientAreaOf(List()).right;
        EXPECT_TRUE(columns >= room - 2 && columns <= room) << columns;
    });
}

TEST_F(MainWindowTest, ABackupIsPutBackFromWhatDiffers) {
    Start();
    const std::string middle = "[Configuration]\r\nPanelsVertical=0\r\n";
    world.disk.Replace(SessionWorld::kWincmd, middle, Backup::Yes);
    world.disk.Replace(SessionWorld::kWincmd, "[Configuration]\r\nPanelsVertical=2\r\nMore=1\r\n",
                       Backup::Yes);
    const auto act = [&] {
        const HWND backups = In(IDC_RESTORE_LSTBACKUPS);
        const HWND differences = In(IDC_RESTORE_LSTDIFFERENCES);
        EXPECT_FALSE(IsWindowEnabled(Main()));
        EXPECT_EQ(GetFocus(), backups);
        EXPECT_EQ(SelectedIn(backups), 0);
        EXPECT_TRUE(IsOn(IDOK));
        const Strings rows = TriplesIn(backups);
        ASSERT_EQ(rows.size(), 2U);
        EXPECT_NE(rows[0].find("26"), std::string::npos);  // of the date, however it is written
        EXPECT_TRUE(rows[0].ends_with(": " + std::to_string(middle.size()) + " | 2"));
        EXPECT_TRUE(rows[1].ends_with(" | 3"));
        EXPECT_EQ(TriplesIn(differences),
                  (Strings{"[Configuration] PanelsVertical: PanelsVertical=0 | PanelsVertical=2",
                           "[Configuration] More: \u2014 | More=1"}));
        SelectRow(backups, 1);
        EXPECT_EQ(RowsIn(differences).size(), 3U);

        // Another file, which has no backups, and back again.
        for (const bool hasBackups : {false, true}) {
            const HWND files = In(IDC_RESTORE_CBOFILE);
            SendMessageW(files, CB_SETCURSEL, hasBackups ? 0 : 1, 0);
            SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_RESTORE_CBOFILE, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(files));
            EXPECT_EQ(TextOf(In(IDC_RESTORE_TXTPATH)),
                      hasBackups ? SessionWorld::kWincmd : SessionWorld::kWincmdData);
            EXPECT_EQ(IsWindowVisible(In(IDC_RESTORE_LBLNOBACKUPS)), !hasBackups);
            EXPECT_EQ(IsWindowVisible(backups), hasBackups);
            EXPECT_EQ(SelectedIn(backups), hasBackups ? 0 : -1);
            EXPECT_EQ(RowsIn(differences).size(), hasBackups ? 2U : 0U);
            EXPECT_EQ(IsOn(IDOK), hasBackups);
        }
        for (const FileError error : {FileError::InUse, FileError::None}) {
            world.disk.FailReplaces(SessionWorld::kWincmd, error);
            Click(IDOK);
            EXPECT_EQ(IsWindowVisible(dialog) != 0, error != FileError::None);
        }
    };
    Show(L"frmRestoreBackup", act, [&] { Do(Command::FileRestoreBackup); });
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd), middle);
}

TEST_F(MainWindowTest, PendingChangesFollowTheMainWindow) {
    Start();
    const auto pending = [&] { return Told(kIdStatusBar1, SB_GETTEXTW, 3); };
    const auto parts = [&] { return Send(kIdStatusBar1, SB_GETPARTS); };
    EXPECT_EQ(parts(), 3);
    world.session->Commands().SetValue("7");
    world.session->Selection().Rows().ShowKeyDetails(1);
    world.session->Commands().SetValue("0");
    EXPECT_EQ(pending(), "2 changes");
    world.disk.Put("C:\\other.lng", "[UserLanguage]\r\n4075=Wartend: %1\r\n");
    world.session->Place().UseLanguage("C:\\other.lng");
    EXPECT_EQ(pending(), "Wartend: 2");
    NMMOUSE click{};
    click.hdr = {Find(kIdStatusBar1), kIdStatusBar1, static_cast<UINT>(NM_CLICK)};
    click.dwItemSpec = 3;
    const auto open = [&] {
        SendMessageW(Main(), WM_NOTIFY, kIdStatusBar1, reinterpret_cast<LPARAM>(&click));
    };
    const auto act = [&] {
        const HWND list = In(IDC_PENDING_LSTCHANGES);
        const HWND lines = In(IDC_PENDING_LSTLINES);
        const auto shows = [&](std::size_t rows) {
            return WaitUntil([&] { return RowsIn(list).size() == rows; });
        };
        EXPECT_EQ(TriplesIn(list), (Strings{"PanelsVertical: Configuration | PanelsVertical=1",
                                            "ShowHidden: Configuration | ;ShowHidden=0"}));
        EXPECT_EQ(CellIn(list, 1, 3), "ShowHidden=0");
        EXPECT_EQ(RowsIn(lines), (Strings{SessionWorld::kWincmd, "  [Configuration]",
                                          "- PanelsVertical=1", "- ;ShowHidden=0",
                                          "+ PanelsVertical=7", "+ ShowHidden=0", "  [Colors]"}));
        EXPECT_EQ(GetFocus(), list);
        PressKey(VK_DELETE);
        EXPECT_TRUE(shows(1)) << "the first row was selected";
        EXPECT_EQ(Rows()[0], "PanelsVertical=1");
        Do(Command::EditUndo);
        EXPECT_TRUE(shows(2));
        ListView_SetItemState(list, -1, LVIS_SELECTED, LVIS_SELECTED);
        Click(IDC_PENDING_CMDDISCARD);
        EXPECT_TRUE(shows(0));
        EXPECT_FALSE(IsOn(IDC_PENDING_CMDDISCARD) || IsOn(IDC_PENDING_CMDSAVE));
        EXPECT_EQ(parts(), 3) << "nothing is pending";
        Do(Command::EditUndo);
        EXPECT_TRUE(shows(2));
        SelectRow(list, 1);
        SetFocus(list);
        PressKey(VK_RETURN);
        EXPECT_EQ(SelectedRow(), 1);
        EXPECT_EQ(GetFocus(), Find(kIdListView1));
        Click(IDC_PENDING_CMDSAVE);
        EXPECT_TRUE(shows(0));
        EXPECT_EQ(Told(kIdStatusBar1, SB_GETTEXTW, 1), "2 keys saved. Backup made.");
        ExpectNoOverlaps(Main());
    };
    Show(L"frmPendingChanges", act, open);
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd),
              "[Configuration]\r\nPanelsVertical=7\r\nShowHidden=0\r\n[Colors]\r\n");
}

TEST_F(MainWindowTest, AnImportIsChosenRowByRow) {
    Start();
    ImportReview review = {
        {{"[A] a", "a=1", "a=2"}, {"[A] b", "b=2", "b=2"}, {"[A] c", "", ";c=3", true}}, 9};
    const auto act = [&] {
        const HWND list = In(IDC_IMPORT_LSTKEYS);
        const auto checks = [&] {
            std::string all;
            for (int row = 0; row < ListView_GetItemCount(list); ++row) {
                all += ListView_GetCheckState(list, row) ? 'x' : '-';
            }
            return all;
        };
        EXPECT_EQ(TriplesIn(list),
                  (Strings{"Set: 2:  | ", "[A] a: a=1 | a=2", "[A] b: b=2 | b=2",
                           "Comment out: 1:  | ", "[A] c: \u2014 | ;c=3",
                           "Keys that are not in this file: 9:  | Remove them, too"}));
        EXPECT_EQ(checks(), "xxxxx-");
        for (const auto& [row, expected] : {std::pair(2, "-x-xx-"), {3, "-x----"}, {5, "-x---x"}}) {
            SelectRow(list, row);
            UpdateWindow(list);
            SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
            EXPECT_EQ(checks(), expected);
            EXPECT_TRUE(GetUpdateRect(list, nullptr, FALSE)) << "other rows may have changed, too";
        }
        const auto clickAt = [&](int fromLabel) {
            const RECT label = PlaceOfRow(list, 5, LVIR_LABEL);
            NMITEMACTIVATE click{};
            click.hdr = {list, IDC_IMPORT_LSTKEYS, static_cast<UINT>(NM_CLICK)};
            click.ptAction = {label.left + fromLabel, (label.top + label.bottom) / 2};
            SendMessageW(GetParent(list), WM_NOTIFY, IDC_IMPORT_LSTKEYS,
                         reinterpret_cast<LPARAM>(&click));
            return checks();
        };
        EXPECT_EQ(clickAt(10), "-x---x") << "on its text";
        EXPECT_EQ(clickAt(-10), "-x----") << "on its box";
        EXPECT_EQ(clickAt(-10), "-x---x");
        Click(IDOK);
    };
    Show(L"frmImportReview", act, [&] { EXPECT_TRUE(prompts.ReviewImport(review)); });
    EXPECT_TRUE(review.removesMissing && review.rows[0].isTaken);
    EXPECT_FALSE(review.rows[1].isTaken || review.rows[2].isTaken);
}

}  // namespace
}  // namespace tamarind
