#include <gtest/gtest.h>

#include <functional>

#include "tests/ui/MainWindowFixture.h"
#include "ui/changes/ChangesIds.h"

namespace tamarind {
namespace {

constexpr int kList = IDC_CONFLICTS_LSTCONFLICTS;

// The question which values stay, over the main window.
class ConflictsWindowTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        Start();
    }
    void PressSpace() const { SendMessageW(In(kList), WM_KEYDOWN, VK_SPACE, 0); }
};

TEST_F(ConflictsWindowTest, EndsAsTheUserChooses) {
    const std::vector<ValueConflict> before = {
        {"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2", true}, {"[A] c", ";c=1", ""}};
    struct Case {
        std::function<void()> actions;
        std::string takesTheirs;
    };
    const Case cases[] = {
        {[&] { PressSpace(); }, "100"},
        {[&] {
             SelectRow(kList, 1);
             Click(IDC_CONFLICTS_OPTTHEIRS);
             SelectRow(kList, 2);
             EXPECT_TRUE(IsChecked(IDC_CONFLICTS_OPTMINE));
             EXPECT_FALSE(IsChecked(IDC_CONFLICTS_OPTTHEIRS));
         },
         "010"},
        {[&] {
             Click(IDC_CONFLICTS_CMDTAKEALL);
             EXPECT_TRUE(IsChecked(IDC_CONFLICTS_OPTTHEIRS));
             SelectRow(kList, 1);
             PressSpace();
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
TEST_F(ConflictsWindowTest, NothingClosesBehindIt) {
    world.session->Selection().ShowKeyDetails(0);
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

TEST_F(ConflictsWindowTest, MarksTheValueThatStays) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=1", "a=2"}, {"[A] b", "", "b=2"}};
    Resolve(conflicts, [&] {
        EXPECT_FALSE(IsWindowEnabled(Main()));
        const std::string mine = CellIn(In(kList), 0, 1);
        const std::string mark = mine.substr(0, mine.size() - 3);
        EXPECT_FALSE(mark.empty());
        EXPECT_EQ(Triples(kList),
                  (Strings{"[A] a: " + mark + "a=1 | a=2", "[A] b: " + mark + "\u2014 | b=2"}));
        Click(IDC_CONFLICTS_CMDTAKEALL);
        EXPECT_EQ(Triples(kList),
                  (Strings{"[A] a: a=1 | " + mark + "a=2", "[A] b: \u2014 | " + mark + "b=2"}));
    });
}

TEST_F(ConflictsWindowTest, ControlsAndColumnsFollowItsSize) {
    std::vector<ValueConflict> conflicts = {{"[A] a", "a=" + std::string(900, 'x'), "a=2"}};
    Resolve(conflicts, [&] {
        const LONG top = BoundsOf(In(IDOK)).top;
        SetWindowPos(dialog, nullptr, 0, 0, static_cast<int>(WidthOf(dialog) + 50),
                     static_cast<int>(HeightOf(dialog) + 30), SWP_NOMOVE | SWP_NOZORDER);
        ExpectNoOverlaps(dialog);
        EXPECT_EQ(BoundsOf(In(IDOK)).top, top + 30);
        RECT area{};
        GetClientRect(In(kList), &area);
        int columns = 0;
        for (const int column : {0, 1, 2}) {
            columns += ListView_GetColumnWidth(In(kList), column);
        }
        EXPECT_TRUE(columns >= area.right - 2 && columns <= area.right) << columns;
    });
}

}  // namespace
}  // namespace tamarind
