#include <gmock/gmock.h>

#include "core/text/WideText_win32.h"
#include "tests/app/RunningProgram.h"
#include "ui/changes/ChangesIds.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::HasSubstr;

using EditingTest = ProgramTest;

constexpr const char* kEditedSettings =
    "[Configuration]\r\nPanelsVertical=7\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
constexpr const char* kOpened = "[PanelsVertical=1]";
constexpr const char* kUntouched = "list: PanelsVertical=1 ShowHidden=0 BackColor=5";
constexpr const char* kEdited = "list: PanelsVertical=7 ShowHidden=0 BackColor=5";

TEST_F(EditingTest, ValuesAreTypedUndoneAndSaved) {
    const RunningProgram program = StartEditor();
    program.TakeSteps({
        {program.ClickOn(0) + " click --delay 60 1", kOpened},
        {"7 Return", kEdited},
        {"ctrl+z", kUntouched},
        {"ctrl+y", kEdited},
        // In the box the keys are neither the list's nor the menu's: the key stays, nothing is
        // undone.
        {"Return", "[PanelsVertical=7]"},
        {"Delete", "[PanelsVertical=]"},
        {"ctrl+z", "[PanelsVertical=7]"},
        {"ctrl+a Delete", "[]"},
        {"ctrl+y 9 Escape", kEdited},
        // Leaving the box drops the text, and so do a click on the list and saving.
        {"Return 9 Tab", "value: PanelsVertical=7 ShowHidden=0 BackColor=5"},
        {"Tab", "description: PanelsVertical=7 ShowHidden=0 BackColor=5"},
        {"shift+Tab shift+Tab Return 8", "[PanelsVertical=8]"},
        {program.ClickOn(1), kEdited},
        {"Return", "[ShowHidden=0]"},
        {"8 ctrl+s", kEdited},
    });
    EXPECT_TRUE(WaitUntil([&] { return Read(L"Wincmd.ini") == kEditedSettings; }));
    program.TakeSteps({{"Up Delete", "list: PanelsVertical ShowHidden=0 BackColor=5"}});
}

TEST_F(EditingTest, WalksFromKeyToKey) {
    Write(L"tamarind editors.ini", "[ConfigurationEditor]\r\nAutoSelectNextKey=1\r\n");
    const RunningProgram program = StartEditor();
    program.TakeSteps({
        {"Tab Return", kOpened},
        {"7 Return", "[ShowHidden=0]"},
        {"8 Return", "[BackColor=5]"},
        {"9 Return", "list: PanelsVertical=7 ShowHidden=8 BackColor=9"},
    });
    EXPECT_EQ(SelectedIn(program.Control(kIdListView1)), 2);
}

TEST_F(EditingTest, SeveralKeysChangeTogether) {
    const RunningProgram program = StartEditor();
    program.TakeSteps({
        {"Tab shift+Down Delete", "list: PanelsVertical ShowHidden BackColor=5"},
        {"ctrl+z", kUntouched},
        {"ctrl+a ctrl+Delete", "list: PanelsVertical ShowHidden BackColor"},
        {"ctrl+z", kUntouched},
        {"Home ctrl+Delete", "list: PanelsVertical ShowHidden=0 BackColor=5"},
    });
    Type(program.WaitForWindow(), "ctrl+shift+s");
    const HWND pending = program.WaitForWindow(L"frmPendingChanges");
    const HWND list = FindControl(pending, IDC_PENDING_LSTCHANGES);
    EXPECT_TRUE(WaitUntil([&] { return RowsIn(list) == Strings{"PanelsVertical"}; }));
    Type(pending, "Delete");
    EXPECT_TRUE(WaitUntil([&] { return RowsIn(list).empty(); }));
    Type(pending, "Escape");
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(pending); }));
    EXPECT_TRUE(program.WaitForState(kUntouched));
}

TEST_F(EditingTest, FilterIsTypedAndLeft) {
    const RunningProgram program = StartEditor();
    program.TakeSteps({
        {"ctrl+e h i d", "filter: ShowHidden=0"},
        {"space z", "filter:"},
        {"BackSpace BackSpace Down", "list: ShowHidden=0"},
        {"Delete", "list: ShowHidden"},
        {"Escape", "list: PanelsVertical=1 ShowHidden BackColor=5"},
        // In the field the keys change nothing but its text.
        {"ctrl+e b", "filter: BackColor=5"},
        {"Home Delete", "filter: PanelsVertical=1 ShowHidden BackColor=5"},
        {"b Return", "list: BackColor=5"},
    });
}

// Each time also a save fails, which leaves the change pending.
TEST_F(EditingTest, ClosingAsksWhatToDoWithChanges) {
    for (const int button : {IDCANCEL, IDNO, IDYES}) {
        SCOPED_TRACE(button);
        const RunningProgram program = StartEditor();
        const HWND window = program.WaitForWindow();
        program.TakeSteps({{"Tab Return", kOpened}, {"7 Return", kEdited}});
        const HANDLE lock = CreateFileW(Path(L"Wincmd.ini").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        Type(window, "ctrl+s");
        EXPECT_THAT(program.Answer(IDOK), HasSubstr("Another program is using it."));
        CloseHandle(lock);
        Type(window, "alt+F4");
        ASSERT_NE(program.WaitForWindow(L"#32770"), nullptr);
        PostMessageW(window, WM_CLOSE, 0, 0);  // asks no second time
        EXPECT_THAT(program.Answer(button),
                    HasSubstr("Save changes to  " + Narrow(Path(L"Wincmd.ini"))));
        if (button == IDCANCEL) {
            program.TakeSteps({{"ctrl+z", kUntouched}});
        } else {
            EXPECT_TRUE(program.WaitForEnd());
        }
        EXPECT_EQ(Read(L"Wincmd.ini"), button == IDYES ? kEditedSettings : kSettings);
    }
}

}  // namespace
}  // namespace tamarind
