#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "core/text/WideText_win32.h"
#include "model/program/Commands.h"
#include "tests/app/ProgramFixture.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

constexpr const wchar_t* kStandinClass = L"TTOTAL_CMD";
constexpr const char* kChangedSettings =
    "[Configuration]\r\nPanelsVertical=0\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";

// With Total Commander's stand-in in the program's folder.
class RestartTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        folder.AddProgram(L"standin\\Totalcmd.exe");
        SetEnvironmentVariableW(L"Commander_Path", folder.Path(L"").c_str());
    }
    void TearDown() override {
        EndStandins();
        // A program's file can be deleted once it has ended.
        EXPECT_TRUE(WaitUntil([&] { return DeleteFileW(folder.Path(L"Totalcmd.exe").c_str()); }));
        SetEnvironmentVariableW(L"Commander_Path", nullptr);
        ProgramTest::TearDown();
    }

    void EndStandins() const {
        DeleteFileW(folder.Path(L"refuse").c_str());
        EXPECT_TRUE(WaitUntil([] {
            const HWND standin = FindWindowW(kStandinClass, nullptr);
            PostMessageW(standin, standin != nullptr ? WM_CLOSE : WM_NULL, 0, 0);
            return standin == nullptr;
        }));
    }
    std::string StandinCommand() const {
        return Narrow(Quoted(L"Totalcmd.exe") + L" /i=" + Quoted(L"Wincmd.ini")) + "\n";
    }
    bool WaitForStarts(int count) const {
        return WaitUntil([&] {
            const std::string starts = folder.Read(L"started.txt");
            return std::count(starts.begin(), starts.end(), '\n') == count;
        });
    }
    void StartStandin() const {
        std::wstring line = Widen(StandinCommand());
        line.pop_back();
        StartDetached(folder.Path(L"Totalcmd.exe"), line);
        ASSERT_TRUE(WaitForStarts(1));
    }
    static int CountStandins() {
        int count = 0;
        for (HWND found = nullptr;
             (found = FindWindowExW(nullptr, found, kStandinClass, nullptr)) != nullptr;) {
            ++count;
        }
        return count;
    }
    // Sets the first key to 0 by the Edit menu, as soon as the window has the focus.
    void SetFirstValue(RunningProgram& program) const {
        const HWND window = program.WaitForMainWindow();
        ASSERT_NE(window, nullptr) << RunningProgram::DialogText(program.WaitForDialog());
        program.TypeFirst("mousemove " + program.PlaceOfRow(0) + " click 1");
        ASSERT_TRUE(WaitUntil([&] { return program.Focus() == kIdListView1; }));
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(Command::EditSetValue0), 0);
        ASSERT_TRUE(program.WaitForRow(0, "PanelsVertical=0"));
    }
};

// It would write its own settings over the saved ones if it were not closed before. One that does
// not close gets a second one beside it.
TEST_F(RestartTest, SavesBetweenClosingAndStartingTotalCommander) {
    for (const bool refuses : {false, true}) {
        SCOPED_TRACE(refuses);
        DeleteFileW(folder.Path(L"started.txt").c_str());
        folder.Write(L"Wincmd.ini", kSettings);
        StartStandin();
        if (refuses) {
            folder.Write(L"refuse", "");
        }
        RunningProgram program(folder, Quoted(L"data.tmdf"));
        SetFirstValue(program);
        // File > Save and Restart Total Commander, by their access keys.
        TypeWithXdotool("key --delay 100 alt+f c");
        ASSERT_TRUE(WaitForStarts(2));
        EXPECT_EQ(CountStandins(), refuses ? 2 : 1);
        EXPECT_EQ(folder.Read(L"Wincmd.ini"), kChangedSettings);
        EXPECT_EQ(folder.Read(L"started.txt"), StandinCommand() + StandinCommand());
        EndStandins();
    }
}

// While the box is open and a change is pending, Total Commander closes and writes what it had.
TEST_F(RestartTest, ItsLastWriteDisturbsNoEditing) {
    folder.Write(
        L"Wincmd.ini",
        "[Configuration]\r\nPanelsVertical=1\r\nShowHidden=8\r\n[Colors]\r\nBackColor=6\r\n");
    StartStandin();
    folder.Write(L"Wincmd.ini", kSettings);
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    SetFirstValue(program);
    TypeWithXdotool("key Down Return");
    const auto box = [&] { return program.Control(kIdTxtInplaceEdit); };
    ASSERT_TRUE(WaitUntil([&] { return RunningProgram::TextOf(box()) == "ShowHidden=0"; }));
    TypeWithXdotool("key 3");
    ASSERT_TRUE(WaitUntil([&] { return RunningProgram::TextOf(box()) == "ShowHidden=3"; }));
    EndStandins();
    program.TypeFirst("key 4");
    ASSERT_TRUE(WaitUntil([&] { return RunningProgram::TextOf(box()) == "ShowHidden=34"; }));
    TypeWithXdotool("key Return ctrl+s");
    const HWND conflicts = program.WaitForWindow(L"frmConflicts");
    ASSERT_NE(conflicts, nullptr);
    RunningProgram::TypeInto(conflicts, "key Return");
    EXPECT_TRUE(WaitUntil([&] {
        return folder.Read(L"Wincmd.ini") ==
               "[Configuration]\r\nPanelsVertical=0\r\nShowHidden=34\r\n[Colors]\r\nBackColor="
               "6\r\n";
    })) << folder.Read(L"Wincmd.ini");
}

TEST_F(RestartTest, EverySaveStartsItWhenTheSettingsSaySo) {
    folder.Write(L"tamarind editors.ini", "[ConfigurationEditor]\r\nAlwaysRestartTC=1\r\n");
    RunningProgram program(folder, Quoted(L"data.tmdf"));
    SetFirstValue(program);
    TypeWithXdotool("key ctrl+s");
    ASSERT_TRUE(WaitForStarts(1));
    EXPECT_EQ(folder.Read(L"Wincmd.ini"), kChangedSettings);
    EXPECT_EQ(folder.Read(L"started.txt"), StandinCommand());
}

}  // namespace
}  // namespace tamarind
