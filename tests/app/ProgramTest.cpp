#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/WideText_win32.h"
#include "tests/app/ProgramFixture.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

TEST_F(ProgramTest, ShowsTheSettingsAndFollowsRealKeysAndTheMouse) {
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    const HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_THAT(RunningProgram::TextOf(window),
                EndsWith(" - " + Narrow(folder.Path(L"Wincmd.ini"))));
    EXPECT_THAT(program.ListRows(9),
                ElementsAre("PanelsVertical=1", "ShowHidden=0", "BackColor=5"));
    EXPECT_EQ(program.StatusText(2), "3  Key(s)");
    EXPECT_EQ(program.SelectedCategory(), "Total Commander Configuration");
    ASSERT_TRUE(WaitUntil([&] { return GetForegroundWindow() == window; }));

    // Down twice in the tree, which has the focus: the second category's key.
    program.TypeFirst("key Down Down");
    ASSERT_TRUE(WaitUntil([&] { return program.SelectedCategory() == "Colors"; }));
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText(2) == "1  Key(s)"; }));
    EXPECT_THAT(program.ListRows(9), ElementsAre("BackColor=5"));
    EXPECT_TRUE(WaitUntil([&] {
        return RunningProgram::TextOf(program.Control(kIdTxtDescriptionBox)) == "The background.";
    }));

    // View > Inactive Keys by its access keys.
    TypeWithXdotool("key --delay 100 alt+v i");
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText(2) == "0  Key(s)"; }));

    // The root, all keys, then the second row by mouse.
    TypeWithXdotool("key Home");
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText(2) == "1  Key(s)"; }));
    TypeWithXdotool("key --delay 100 alt+v k");
    ASSERT_TRUE(WaitUntil([&] { return program.ListRows(9).size() == 3; }));
    TypeWithXdotool("mousemove " + program.PlaceOfRow(1) + " click 1");
    EXPECT_TRUE(WaitUntil([&] { return program.SelectedRow() == 1; }));
}

TEST_F(ProgramTest, WindowBoundsAreKeptForTheNextStart) {
    RECT moved = {};
    {
        RunningProgram program(folder, Quoted(L"data.tmdf"));
        const HWND window = program.WaitForMainWindow();
        ASSERT_NE(window, nullptr);
        SetWindowPos(window, nullptr, 120, 90, 700, 500, SWP_NOZORDER);
        ASSERT_TRUE(WaitUntil([&] {
            GetWindowRect(window, &moved);
            return moved.right - moved.left == 700;
        }));
    }
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    RECT bounds = {};
    GetWindowRect(program.WaitForMainWindow(), &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 700);
    EXPECT_EQ(bounds.bottom - bounds.top, 500);
}

TEST_F(ProgramTest, ASecondStartBringsTheWindowOfTheSameDataFileForward) {
    folder.Write(L"other.tmdf", kDataFile);
    RunningProgram first(folder, Quoted(L"data.tmdf"));
    const HWND window = first.WaitForMainWindow();
    RunningProgram other(folder, Quoted(L"other.tmdf"));
    const HWND otherWindow = other.WaitForMainWindow();
    ASSERT_NE(otherWindow, nullptr);
    ASSERT_NE(otherWindow, window);
    ShowWindow(window, SW_MINIMIZE);
    RunningProgram second(folder, Quoted(L"DATA.tmdf"));
    EXPECT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(window) && GetForegroundWindow() == window; }));
}

// Each ends with a message that says what is wrong, and with the program where it can go on.
TEST_F(ProgramTest, BadCommandLinesAndDataFilesEndInAMessage) {
    const std::wstring cyrillic = L"\x041A\x043B\x044E\x0447\x0438.tmdf";
    folder.Write(cyrillic, kDataFile);
    folder.Write(L"empty.tmdf", "");
    folder.Write(L"binary.tmdf", std::string("\x7F\x45LF\0\0[\xFF\xFE", 9));
    CreateDirectoryW(folder.Path(L"folder.tmdf").c_str(), nullptr);
    folder.Write(L"huge.tmdf", "");
    const HANDLE huge = CreateFileW(folder.Path(L"huge.tmdf").c_str(), GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    SetFilePointer(huge, 100 << 20, nullptr, FILE_BEGIN);
    SetEndOfFile(huge);
    CloseHandle(huge);
    struct Case {
        std::wstring arguments;
        const char* message;  // nothing: the window comes up at once
    };
    const Case cases[] = {
        {Quoted(cyrillic), nullptr},
        {folder.Path(L"data.tmdf"), "Cannot find data file"},
        {Quoted(L"data.tmdf") + L" " + Quoted(L"data.tmdf"), "Cannot find data file"},
        {Quoted(L"missing.tmdf"), "Cannot find data file"},
        {Quoted(L"folder.tmdf"), "Cannot find data file"},
        {Quoted(L"huge.tmdf"), "larger than 64 MB"},
        {Quoted(L"empty.tmdf"), "target section for this category is missing"},
        {Quoted(L"binary.tmdf"), "target section for this category is missing"},
    };
    for (const Case& testCase : cases) {
        RunningProgram program(folder, testCase.arguments);
        if (testCase.message == nullptr) {
            EXPECT_NE(program.WaitForMainWindow(), nullptr);
            EXPECT_EQ(program.ListRows(9).size(), 3U);
            continue;
        }
        const HWND dialog = program.WaitForDialog();
        EXPECT_THAT(RunningProgram::DialogText(dialog), HasSubstr(testCase.message))
            << Narrow(testCase.arguments);
    }
}

TEST_F(ProgramTest, GoesOnWithoutRegistryEntriesSettingsFileAndWritableFolder) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);
    // A folder of that name keeps the program from making its own settings file.
    CreateDirectoryW(folder.Path(L"tamarind editors.ini").c_str(), nullptr);
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    HWND dialog = program.WaitForDialog();
    EXPECT_THAT(RunningProgram::DialogText(dialog), HasSubstr("[Wincmd.ini]"));
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(WaitUntil([&] {
        const HWND next = program.WaitForDialog();
        return next != nullptr && next != dialog;
    }));
    SendMessageW(program.WaitForDialog(), WM_COMMAND, IDCANCEL, 0);
    ASSERT_NE(program.WaitForMainWindow(), nullptr);
    EXPECT_THAT(program.ListRows(9), ElementsAre("PanelsVertical", "ShowHidden", "BackColor"));
}

TEST_F(ProgramTest, ALockedSettingsFileIsNamedAndLeftAlone) {
    const HANDLE lock = CreateFileW(folder.Path(L"Wincmd.ini").c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    const HWND dialog = program.WaitForDialog();
    EXPECT_THAT(RunningProgram::DialogText(dialog), HasSubstr("Another program is using it."));
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    ASSERT_NE(program.WaitForMainWindow(), nullptr);
    EXPECT_THAT(program.ListRows(9), ElementsAre("PanelsVertical", "ShowHidden", "BackColor"));
    CloseHandle(lock);
}

}  // namespace
}  // namespace tamarind
