#include <gmock/gmock.h>

#include "core/text/WideText_win32.h"
#include "tests/app/RunningProgram.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST_F(ProgramTest, ShowsTheSettingsAndFollowsRealKeysAndTheMouse) {
    const std::wstring cyrillic = L"\x041A\x043B\x044E\x0447\x0438.tmdf";
    Write(cyrillic, kDataFile);
    const RunningProgram program = StartEditor(cyrillic);
    EXPECT_THAT(TextOf(program.WaitForWindow()), EndsWith(" - " + Narrow(Path(L"Wincmd.ini"))));
    program.TakeSteps({
        {"Down Down", "tree: BackColor=5"},
        // View > Inactive Keys and All Keys by their access keys, with the root in between.
        {"--delay 100 alt+v i", "tree:"},
        {"Home", "tree: ShowHidden=0"},
        {"--delay 100 alt+v k", "tree: PanelsVertical=1 ShowHidden=0 BackColor=5"},
        {program.ClickOn(1), "list: PanelsVertical=1 ShowHidden=0 BackColor=5"},
    });
    const HWND description = program.Control(kIdTxtDescriptionBox);
    EXPECT_TRUE(WaitUntil([&] { return TextOf(description) == "Hidden files."; }));
}

TEST_F(ProgramTest, ASecondStartBringsTheWindowOfTheSameDataFileForward) {
    Write(L"other.tmdf", kDataFile);
    const RunningProgram first = StartEditor();
    const HWND window = first.WaitForWindow();
    const RunningProgram other = StartEditor(L"other.tmdf");
    ASSERT_NE(other.WaitForWindow(), nullptr);
    ShowWindow(window, SW_MINIMIZE);
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);  // it is not to ask for the settings
    EXPECT_TRUE(StartEditor(L"DATA.tmdf").WaitForEnd());
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(window) && GetForegroundWindow() == window; }));
}

// Each message says what is wrong.
TEST_F(ProgramTest, GoesOnWithoutRegistryEntriesFilesAndWritableFolder) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);
    // A folder of that name keeps the program from making its own settings file.
    CreateDirectoryW(Path(L"tamarind editors.ini").c_str(), nullptr);
    const RunningProgram program = StartEditor();
    EXPECT_THAT(program.Answer(IDOK), HasSubstr("[Wincmd.ini]"));
    program.Answer(IDCANCEL);  // the choice of a file
    EXPECT_TRUE(program.WaitForState("tree: PanelsVertical ShowHidden BackColor"));
    EXPECT_THAT(StartEditor(L"missing.tmdf").Answer(IDOK), HasSubstr("Cannot find data file"));
}

}  // namespace
}  // namespace tamarind
