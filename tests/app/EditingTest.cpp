#include <gmock/gmock.h>

#include <memory>
#include <utility>

#include "core/text/WideText_win32.h"
#include "tests/app/RunningProgram.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::HasSubstr;

constexpr const char* kEditedSettings =
    "[Configuration]\r\nPanelsVertical=7\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
constexpr const char* kOpened = "[PanelsVertical=1]";
constexpr const char* kUntouched = "list: PanelsVertical=1 ShowHidden=0 BackColor=5";
constexpr const char* kEdited = "list: PanelsVertical=7 ShowHidden=0 BackColor=5";

class EditingTest : public ProgramTest {
protected:
    std::unique_ptr<RunningProgram> program;
    HWND window = nullptr;

    void Start() {
        program =
            std::make_unique<RunningProgram>(Path(L"TamarindEditor.exe"), Quoted(L"data.tmdf"));
        window = program->WaitForWindow();
        ASSERT_TRUE(
            WaitUntil([&] { return State() == "tree" + std::string(kUntouched).substr(4); }));
    }
    // "[text]" while the box is open and has the focus, or else the focus and all rows of the list.
    std::string State() const {
        const HWND box = FindControl(window, kIdTxtInplaceEdit);
        const int focus = FocusBeside(window);
        if (focus == kIdTxtInplaceEdit) {
            return IsWindowVisible(box) ? "[" + TextOf(box) + "]" : "(hidden)";
        }
        std::string state = IsWindowVisible(box)            ? "(box)"
                            : focus == kIdListView1         ? "list:"
                            : focus == kIdTreeView1         ? "tree:"
                            : focus == kIdTxtDescriptionBox ? "description:"
                                                            : "(none)";
        for (const std::string& row : RowsIn(FindControl(window, kIdListView1))) {
            state += " " + row;
        }
        return state;
    }
    // Types keys or clicks, one step after the other, and waits for the state that each leads to.
    void TakeSteps(const std::vector<std::pair<std::string, std::string>>& steps) const {
        for (const auto& [input, state] : steps) {
            Type(window, input.starts_with("mouse") ? input : "key " + input);
            ASSERT_TRUE(WaitUntil([&, &wanted = state] { return State() == wanted; }))
                << input << ": " << State();
        }
    }
};

TEST_F(EditingTest, ValuesAreTypedUndoneAndSaved) {
    Start();
    TakeSteps({
        {program->ClickOn(0) + " click --delay 60 1", kOpened},
        {"7 Return", kEdited},
        {"ctrl+z", kUntouched},
        {"ctrl+y", kEdited},
        // A click on the list drops the text, and so does saving.
        {"Return", "[PanelsVertical=7]"},
        {"8", "[PanelsVertical=8]"},
        {program->ClickOn(1), kEdited},
        {"Return", "[ShowHidden=0]"},
        {"8 ctrl+s", kEdited},
    });
    EXPECT_TRUE(WaitUntil([&] { return Read(L"Wincmd.ini") == kEditedSettings; }));
}

TEST_F(EditingTest, KeysBelongToTheBoxWhileItIsOpen) {
    Start();
    TakeSteps({
        {"Tab Return", kOpened},
        {"7 Return", kEdited},
        {"Return", "[PanelsVertical=7]"},
        // Neither of them is the list's or the menu's: the key stays, nothing is undone.
        {"Delete", "[PanelsVertical=]"},
        {"ctrl+z", "[PanelsVertical=7]"},
        {"ctrl+a Delete", "[]"},
        {"ctrl+y 9 Escape", kEdited},
        {"Return", "[PanelsVertical=7]"},
        {"9 Tab", "description: PanelsVertical=7 ShowHidden=0 BackColor=5"},
        // In the list they are the commands' keys.
        {"shift+Tab Delete", "list: PanelsVertical ShowHidden=0 BackColor=5"},
    });
}

TEST_F(EditingTest, WalksFromKeyToKey) {
    Write(L"tamarind editors.ini", "[ConfigurationEditor]\r\nAutoSelectNextKey=1\r\n");
    Start();
    TakeSteps({
        {"Tab Return", kOpened},
        {"7 Return", "[ShowHidden=0]"},
        {"8 Return", "[BackColor=5]"},
        {"9 Return", "list: PanelsVertical=7 ShowHidden=8 BackColor=9"},
    });
    EXPECT_EQ(SelectedIn(FindControl(window, kIdListView1)), 2);
}

// Each time also a save fails, which leaves the change pending.
TEST_F(EditingTest, ClosingAsksWhatToDoWithChanges) {
    for (const int button : {IDCANCEL, IDNO, IDYES}) {
        SCOPED_TRACE(button);
        Start();
        TakeSteps({{"Tab Return", kOpened}, {"7 Return", kEdited}});
        const HANDLE lock = CreateFileW(Path(L"Wincmd.ini").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        Type(window, "key ctrl+s");
        EXPECT_THAT(program->Answer(IDOK), HasSubstr("Another program is using it."));
        CloseHandle(lock);
        Type(window, "key alt+F4");
        ASSERT_NE(program->WaitForWindow(L"#32770"), nullptr);
        PostMessageW(window, WM_CLOSE, 0, 0);  // asks no second time
        EXPECT_THAT(program->Answer(button),
                    HasSubstr("Save changes to  " + Narrow(Path(L"Wincmd.ini"))));
        if (button == IDCANCEL) {
            TakeSteps({{"ctrl+z", kUntouched}});
        } else {
            EXPECT_TRUE(program->WaitForEnd());
        }
        EXPECT_EQ(Read(L"Wincmd.ini"), button == IDYES ? kEditedSettings : kSettings);
    }
}

TEST_F(EditingTest, KeysAreFoundFromTheKeyboard) {
    Start();
    Type(window, "key ctrl+f");
    const HWND search = program->WaitForWindow(L"frmSearchFor");
    Type(search, "key h i d Return");
    ASSERT_TRUE(WaitUntil([&] { return SelectedIn(program->Control(kIdListView1)) == 1; }));
    Type(search, "key Return");
    EXPECT_THAT(program->Answer(IDOK), HasSubstr("Cannot find \"hid\""));
    Type(search, "key Escape");
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(search); }));
}

}  // namespace
}  // namespace tamarind
