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
    const RunningProgram program(Path(L"TamarindEditor.exe"), Quoted(cyrillic));
    const HWND window = program.WaitForWindow();
    EXPECT_THAT(TextOf(window), EndsWith(" - " + Narrow(Path(L"Wincmd.ini"))));
    const Strings all = {"PanelsVertical=1", "ShowHidden=0", "BackColor=5"};
    ASSERT_TRUE(program.WaitForRows(all));
    const std::pair<const char*, Strings> steps[] = {
        // In the tree, which has the focus: the second category's key.
        {"Down Down", {"BackColor=5"}},
        // View > Inactive Keys and All Keys by their access keys, with the root in between.
        {"--delay 100 alt+v i", {}},
        {"Home", {"ShowHidden=0"}},
        {"--delay 100 alt+v k", all},
    };
    for (const auto& [keys, rows] : steps) {
        Type(window, std::string("key ") + keys);
        ASSERT_TRUE(program.WaitForRows(rows)) << keys;
    }
    Type(window, program.ClickOn(1));
    EXPECT_TRUE(WaitUntil([&] { return SelectedIn(program.Control(kIdListView1)) == 1; }));
    EXPECT_EQ(TextOf(program.Control(kIdTxtDescriptionBox)), "Hidden files.");
}

TEST_F(ProgramTest, ASecondStartBringsTheWindowOfTheSameDataFileForward) {
    Write(L"other.tmdf", kDataFile);
    const std::wstring path = Path(L"TamarindEditor.exe");
    const RunningProgram first(path, Quoted(L"data.tmdf"));
    const HWND window = first.WaitForWindow();
    const RunningProgram other(path, Quoted(L"other.tmdf"));
    ASSERT_NE(other.WaitForWindow(), nullptr);
    ShowWindow(window, SW_MINIMIZE);
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);  // it is not to ask for the settings
    const RunningProgram second(path, Quoted(L"DATA.tmdf"));
    EXPECT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitUntil([&] { return !IsIconic(window) && GetForegroundWindow() == window; }));
}

// Each message says what is wrong.
TEST_F(ProgramTest, GoesOnWithoutRegistryEntriesFilesAndWritableFolder) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);
    // A folder of that name keeps the program from making its own settings file.
    CreateDirectoryW(Path(L"tamarind editors.ini").c_str(), nullptr);
    const RunningProgram program(Path(L"TamarindEditor.exe"), Quoted(L"data.tmdf"));
    EXPECT_THAT(program.Answer(IDOK), HasSubstr("[Wincmd.ini]"));
    program.Answer(IDCANCEL);  // the choice of a file
    EXPECT_TRUE(program.WaitForRows({"PanelsVertical", "ShowHidden", "BackColor"}));

    const RunningProgram other(Path(L"TamarindEditor.exe"), Quoted(L"missing.tmdf"));
    EXPECT_THAT(other.Answer(IDOK), HasSubstr("Cannot find data file"));
}

}  // namespace
}  // namespace tamarind
