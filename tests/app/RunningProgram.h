#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/ui/WindowDriver.h"

namespace tamarind {

inline constexpr const wchar_t* kTotalCommanderKey = L"Software\\Ghisler\\Total Commander";
inline constexpr const char* kSettings =
    "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
inline constexpr const char* kDataFile =
    "[Panels]\r\nCategoryTargetSection=Configuration\r\nPanelsVertical=0///Panels.@0 = no\r\n"
    "ShowHidden=1///Hidden files.\r\n"
    "[Colors]\r\nCategoryTargetSection=Colors\r\nBackColor=-1///The background.\r\n";

// A program in a process of its own, the editor above all, seen from outside as a screen reader
// sees it. It is ended with the object.
class RunningProgram {
public:
    // `arguments` follow the program's name on the command line as they are.
    RunningProgram(const std::wstring& path, const std::wstring& arguments);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // A shown window of the program of that class, or null. "#32770" is a message box.
    HWND WaitForWindow(const wchar_t* windowClass = L"frmMain") const;
    // Presses a button of the message box and gives the texts of its controls.
    std::string Answer(int button) const;
    bool WaitForEnd() const;
    HANDLE Process() const { return m_process.hProcess; }

    HWND Control(int id) const { return FindControl(WaitForWindow(), id); }
    // "[text]" while the box over the list is open and has the focus, or else where the focus is
    // and what the rows of the list say: "tree: A=1 B=2".
    std::string State() const;
    bool WaitForState(const std::string& state) const;
    // Types keys or clicks, one step after the other, and waits for the state that each leads to.
    void TakeSteps(const std::vector<std::pair<std::string, std::string>>& steps) const;
    // A click on a row, for a step.
    std::string ClickOn(int row) const;

private:
    PROCESS_INFORMATION m_process = {};
};

// The program in a folder of its own, beside a data file, with settings that the registry names.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    std::wstring Path(const std::wstring& name) const { return m_folder + name; }
    std::wstring Quoted(const std::wstring& name) const { return L"\"" + Path(name) + L"\""; }
    void Write(const std::wstring& name, const std::string& bytes) const;
    std::string Read(const std::wstring& name) const;
    // Puts a program into the folder; the path is the one from the tests to where it was built.
    void AddProgram(const wchar_t* builtPath) const;
    RunningProgram StartEditor(const std::wstring& dataFile = L"data.tmdf") const {
        return {Path(L"TamarindEditor.exe"), Quoted(dataFile)};
    }

private:
    std::wstring m_folder;
};

// Keys through the X server, or "mousemove 10 20" and what else the tool xdotool knows of the
// mouse, once it sends keys to the window. Windows may call it the foreground window before that.
void Type(HWND window, const std::string& input);

}  // namespace tamarind
