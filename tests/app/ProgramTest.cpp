#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/text/WideText_win32.h"
#include "tests/app/ProgramFixture.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST_F(ProgramTest, ShowsTheSettingsAndFollowsRealKeysAndTheMouse) {
    const std::wstring cyrillic = L"\x041A\x043B\x044E\x0447\x0438.tmdf";
    folder.Write(cyrillic, kDataFile);
    RunningProgram program(folder, Quoted(cyrillic));
    const HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_THAT(RunningProgram::TextOf(window),
                EndsWith(" - " + Narrow(folder.Path(L"Wincmd.ini"))));
    EXPECT_TRUE(program.WaitForRows({"PanelsVertical=1", "ShowHidden=0", "BackColor=5"}));

    // Down twice in the tree, which has the focus: the second category's key.
    program.TypeFirst("key Down Down");
    ASSERT_TRUE(program.WaitForRows({"BackColor=5"}));
    EXPECT_TRUE(WaitUntil([&] {
        return RunningProgram::TextOf(program.Control(kIdTxtDescriptionBox)) == "The background.";
    }));
    // View > Inactive Keys and All Keys by their access keys, with the root in between.
    TypeWithXdotool("key --delay 100 alt+v i");
    EXPECT_TRUE(program.WaitForRows({}));
    TypeWithXdotool("key Home");
    EXPECT_TRUE(program.WaitForRows({"ShowHidden=0"}));
    TypeWithXdotool("key --delay 100 alt+v k");
    ASSERT_TRUE(WaitUntil([&] { return program.ListRows().size() == 3; }));
    TypeWithXdotool("mousemove " + program.PlaceOfRow(1) + " click 1");
    EXPECT_TRUE(WaitUntil([&] { return program.SelectedRow() == 1; }));
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
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);  // it is not to ask for the settings
    RunningProgram second(folder, Quoted(L"DATA.tmdf"));
    EXPECT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(window) && GetForegroundWindow() == window; }));
}

// Each message says what is wrong.
TEST_F(ProgramTest, GoesOnWithoutRegistryEntriesFilesAndWritableFolder) {
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
    EXPECT_TRUE(program.WaitForRows({"PanelsVertical", "ShowHidden", "BackColor"}));

    RunningProgram other(folder, Quoted(L"missing.tmdf"));
    dialog = other.WaitForDialog();
    EXPECT_THAT(RunningProgram::DialogText(dialog), HasSubstr("Cannot find data file"));
}

}  // namespace
}  // namespace tamarind
