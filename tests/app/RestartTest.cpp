#include "core/text/WideText_win32.h"
#include "tests/app/RunningProgram.h"

namespace tamarind {
namespace {

constexpr const wchar_t* kStandinClass = L"TTOTAL_CMD";
constexpr const char* kChangedSettings =
    "[Configuration]\r\nPanelsVertical=0\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
constexpr const char* kChanged = "list: PanelsVertical=0 ShowHidden=0 BackColor=5";

// With Total Commander's stand-in in the program's folder.
class RestartTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        AddProgram(L"standin\\Totalcmd.exe");
        SetEnvironmentVariableW(L"Commander_Path", Path(L"").c_str());
    }
    void TearDown() override {
        EndStandins();
        // A program's file can be deleted once it has ended.
        EXPECT_TRUE(WaitUntil([&] { return DeleteFileW(Path(L"Totalcmd.exe").c_str()); }));
        SetEnvironmentVariableW(L"Commander_Path", nullptr);
        ProgramTest::TearDown();
    }

    std::wstring StandinArguments() const { return L"/i=" + Quoted(L"Wincmd.ini"); }
    RunningProgram StartStandin() const { return {Path(L"Totalcmd.exe"), StandinArguments()}; }
    // Waits until it was started that often, each time for the settings.
    bool WaitForStarts(int count) const {
        std::string expected;
        while (count-- > 0) {
            expected += Narrow(Quoted(L"Totalcmd.exe") + L" " + StandinArguments()) + "\n";
        }
        return WaitUntil([&] { return Read(L"started.txt") == expected; });
    }
    void EndStandins() const {
        DeleteFileW(Path(L"refuse").c_str());
        EXPECT_TRUE(WaitUntil([] {
            const HWND standin = FindWindowW(kStandinClass, nullptr);
            PostMessageW(standin, standin != nullptr ? WM_CLOSE : WM_NULL, 0, 0);
            return standin == nullptr;
        }));
    }
};

// It would write its own settings over the saved ones if it were not closed before. One that does
// not close gets a second one beside it.
TEST_F(RestartTest, SavesBetweenClosingAndStartingTotalCommander) {
    for (const bool refuses : {false, true}) {
        SCOPED_TRACE(refuses);
        DeleteFileW(Path(L"started.txt").c_str());
        Write(L"Wincmd.ini", kSettings);
        const RunningProgram standin = StartStandin();
        ASSERT_TRUE(WaitForStarts(1));
        if (refuses) {
            Write(L"refuse", "");
        }
        const RunningProgram program = StartEditor();
        program.TakeSteps({{"Tab Return 0 Return", kChanged}});
        // File > Save and Restart Total Commander, by their access keys.
        Type(program.WaitForWindow(), "--delay 100 alt+f c");
        ASSERT_TRUE(WaitForStarts(2));
        const HWND first = FindWindowW(kStandinClass, nullptr);
        EXPECT_EQ(FindWindowExW(nullptr, first, kStandinClass, nullptr) != nullptr, refuses);
        EXPECT_EQ(Read(L"Wincmd.ini"), kChangedSettings);
        EndStandins();
    }
}

// While the box is open and a change is pending, Total Commander closes and writes what it had.
TEST_F(RestartTest, ItsLastWriteDisturbsNoEditing) {
    const std::string itsSettings =
        "[Configuration]\r\nPanelsVertical=1\r\nShowHidden=8\r\n[Colors]\r\nBackColor=6\r\n";
    Write(L"Wincmd.ini", itsSettings);
    const RunningProgram standin = StartStandin();
    ASSERT_TRUE(WaitForStarts(1));
    Write(L"Wincmd.ini", kSettings);
    const RunningProgram program = StartEditor();
    program.TakeSteps({{"Tab Return 0 Return", kChanged}, {"Down Return 3", "[ShowHidden=3]"}});
    EndStandins();
    program.TakeSteps({{"4", "[ShowHidden=34]"}});
    Type(program.WaitForWindow(), "Return ctrl+s");
    Type(program.WaitForWindow(L"frmConflicts"), "Return");
    const std::string both =
        "[Configuration]\r\nPanelsVertical=0\r\nShowHidden=34\r\n[Colors]\r\nBackColor=6\r\n";
    EXPECT_TRUE(WaitUntil([&] { return Read(L"Wincmd.ini") == both; })) << Read(L"Wincmd.ini");
}

TEST_F(RestartTest, EverySaveStartsItWhenTheSettingsSaySo) {
    Write(L"tamarind editors.ini", "[ConfigurationEditor]\r\nAlwaysRestartTC=1\r\n");
    const RunningProgram program = StartEditor();
    program.TakeSteps({{"Tab Return 0 Return", kChanged}});
    Type(program.WaitForWindow(), "ctrl+s");
    ASSERT_TRUE(WaitForStarts(1));
    EXPECT_EQ(Read(L"Wincmd.ini"), kChangedSettings);
}

}  // namespace
}  // namespace tamarind
