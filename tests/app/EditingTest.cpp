#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/text/WideText_win32.h"
#include "tests/app/ProgramFixture.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::HasSubstr;

constexpr const char* kEditedSettings =
    "[Configuration]\r\nPanelsVertical=7\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";

class EditingTest : public ProgramTest {
protected:
    std::unique_ptr<RunningProgram> program;
    HWND window = nullptr;

    void Start() {
        program = std::make_unique<RunningProgram>(folder, Quoted(L"data.tmdf"));
        window = program->WaitForMainWindow();
        ASSERT_TRUE(WaitUntil([&] { return GetForegroundWindow() == window; }));
    }
    HWND Box() const { return program->Control(kIdTxtInplaceEdit); }
    bool WaitForBox(const std::string& text) const {
        return WaitUntil([&] {
            const HWND box = Box();
            return IsWindowVisible(box) && program->Focus() == kIdTxtInplaceEdit &&
                   RunningProgram::TextOf(box) == text;
        });
    }
    bool WaitForNoBox() const {
        return WaitUntil([&] { return !IsWindowVisible(Box()); });
    }
    bool WaitForFocus(int id) const {
        return WaitUntil([&] { return program->Focus() == id; });
    }
    // Types keys, after which the box shows `text`.
    void TypeForBox(const std::string& keys, const std::string& text) const {
        TypeWithXdotool("key " + keys);
        ASSERT_TRUE(WaitForBox(text));
    }
    // Types keys, after which the box is closed and the first row shows `text`.
    void TypeForRow(const std::string& keys, const std::string& text) const {
        TypeWithXdotool("key " + keys);
        ASSERT_TRUE(WaitForNoBox());
        ASSERT_TRUE(program->WaitForRow(0, text));
    }
    void AnswerDialog(const char* text) const {
        const HWND dialog = program->WaitForDialog();
        EXPECT_THAT(RunningProgram::DialogText(dialog), HasSubstr(text));
        program->Answer(dialog, IDOK);
    }
    // From the tree, which has the focus at first, to the list.
    void FocusList() const {
        program->TypeFirst("key Tab");
        ASSERT_TRUE(WaitForFocus(kIdListView1));
    }
    // Leaves 7 in the first row, still to be saved.
    void EditFirstRow() const {
        FocusList();
        TypeForBox("Return", "PanelsVertical=1");
        TypeWithXdotool("key 7 Return");
        ASSERT_TRUE(program->WaitForRow(0, "PanelsVertical=7"));
    }
    HWND AskToClose() const {
        TypeWithXdotool("key alt+F4");
        return program->WaitForDialog();
    }
    void CloseWithoutSaving() const { program->Answer(AskToClose(), IDNO); }
};

TEST_F(EditingTest, ValuesAreTypedUndoneAndSaved) {
    Start();
    program->TypeFirst("mousemove " + program->PlaceOfRow(0) + " click --repeat 2 --delay 60 1");
    ASSERT_TRUE(WaitForBox("PanelsVertical=1"));
    TypeForRow("7 Return", "PanelsVertical=7");
    EXPECT_TRUE(WaitForFocus(kIdListView1));
    TypeForRow("ctrl+z", "PanelsVertical=1");
    TypeForRow("ctrl+y", "PanelsVertical=7");

    // A click on the list drops the text, and so does saving.
    TypeForBox("Return", "PanelsVertical=7");
    TypeForBox("8", "PanelsVertical=8");
    TypeWithXdotool("mousemove " + program->PlaceOfRow(1) + " click 1");
    EXPECT_TRUE(WaitForNoBox());
    TypeForBox("Return", "ShowHidden=0");
    TypeWithXdotool("key 8 ctrl+s");
    EXPECT_TRUE(WaitUntil([&] { return folder.Read(L"Wincmd.ini") == kEditedSettings; }));
    EXPECT_TRUE(WaitForNoBox());
    EXPECT_TRUE(program->WaitForRows({"PanelsVertical=7", "ShowHidden=0", "BackColor=5"}));
}

TEST_F(EditingTest, KeysBelongToTheBoxWhileItIsOpen) {
    Start();
    EditFirstRow();
    TypeForBox("Return", "PanelsVertical=7");
    // Neither of them is the list's or the menu's: the key stays, nothing is undone.
    TypeForBox("Delete", "PanelsVertical=");
    TypeForBox("ctrl+z", "PanelsVertical=7");
    TypeForBox("ctrl+a Delete", "");
    TypeForRow("ctrl+y 9 Escape", "PanelsVertical=7");
    EXPECT_TRUE(WaitForFocus(kIdListView1));

    TypeForBox("Return", "PanelsVertical=7");
    TypeForRow("9 Tab", "PanelsVertical=7");
    EXPECT_TRUE(WaitForFocus(kIdTxtDescriptionBox));

    // In the list they are the commands' keys.
    TypeForRow("shift+Tab Delete", "PanelsVertical");
    CloseWithoutSaving();
}

TEST_F(EditingTest, WalksFromKeyToKey) {
    folder.Write(L"tamarind editors.ini", "[ConfigurationEditor]\r\nAutoSelectNextKey=1\r\n");
    Start();
    EditFirstRow();
    ASSERT_TRUE(WaitForBox("ShowHidden=0"));
    EXPECT_EQ(program->SelectedRow(), 1);
    TypeForBox("8 Return", "BackColor=5");
    TypeWithXdotool("key 9 Return");
    EXPECT_TRUE(program->WaitForRows({"PanelsVertical=7", "ShowHidden=8", "BackColor=9"}));
    EXPECT_TRUE(WaitForNoBox());
    EXPECT_EQ(program->SelectedRow(), 2);
    CloseWithoutSaving();
}

TEST_F(EditingTest, ClosingAsksWhatToDoWithChanges) {
    struct Case {
        int button;
        const char* settings;
    };
    for (const Case& testCase :
         {Case{IDCANCEL, kSettings}, {IDNO, kSettings}, {IDYES, kEditedSettings}}) {
        SCOPED_TRACE(testCase.button);
        Start();
        EditFirstRow();
        const HWND dialog = AskToClose();
        EXPECT_THAT(RunningProgram::DialogText(dialog),
                    HasSubstr("Save changes to  " + Narrow(folder.Path(L"Wincmd.ini"))));
        PostMessageW(window, WM_CLOSE, 0, 0);  // asks no second time
        program->Answer(dialog, testCase.button);
        if (testCase.button == IDCANCEL) {
            EXPECT_TRUE(program->WaitForRow(0, "PanelsVertical=7"));
            TypeForRow("ctrl+z", "PanelsVertical=1");
            CloseWithoutSaving();
        }
        EXPECT_TRUE(program->WaitForEnd());
        EXPECT_EQ(folder.Read(L"Wincmd.ini"), testCase.settings);
    }
}

TEST_F(EditingTest, ASaveThatFailsLeavesTheChangesPending) {
    Start();
    EditFirstRow();
    const HANDLE lock = CreateFileW(folder.Path(L"Wincmd.ini").c_str(), GENERIC_READ,
                                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    TypeWithXdotool("key ctrl+s");
    AnswerDialog("Another program is using it.");
    EXPECT_TRUE(WaitForFocus(kIdListView1));
    EXPECT_EQ(folder.Read(L"Wincmd.ini"), kSettings);
    CloseHandle(lock);
    TypeWithXdotool("key ctrl+s");
    EXPECT_TRUE(WaitUntil([&] { return folder.Read(L"Wincmd.ini") == kEditedSettings; }));
}

TEST_F(EditingTest, AValueThatIsTooLongStaysInTheBox) {
    Start();
    FocusList();
    TypeForBox("Return", "PanelsVertical=1");
    const std::wstring text(100000, L'x');
    SendMessageW(Box(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    TypeWithXdotool("key End y Return");
    AnswerDialog("at most 4,095 characters");
    EXPECT_TRUE(WaitForFocus(kIdTxtInplaceEdit));
    EXPECT_TRUE(IsWindowVisible(Box()));
    EXPECT_EQ(SendMessageW(Box(), WM_GETTEXTLENGTH, 0, 0), 100001);
    TypeForRow("Escape", "PanelsVertical=1");
}

TEST_F(EditingTest, KeysAreFoundFromTheKeyboard) {
    Start();
    program->TypeFirst("key ctrl+f");
    const HWND search = program->WaitForWindow(L"frmSearchFor");
    ASSERT_NE(search, nullptr);
    RunningProgram::TypeInto(search, "key h i d Return");
    ASSERT_TRUE(WaitUntil([&] { return program->SelectedRow() == 1; }));
    TypeWithXdotool("key Return");
    AnswerDialog("Cannot find \"hid\"");
    RunningProgram::TypeInto(search, "key Escape");
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(search); }));
}

}  // namespace
}  // namespace tamarind
