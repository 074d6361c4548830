#pragma once

#include <gtest/gtest.h>

#include "tests/ui/WindowDriver.h"

namespace tamarind {

inline constexpr const wchar_t* kTotalCommanderKey = L"Software\\Ghisler\\Total Commander";
inline constexpr const char* kSettings =
    "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
inline constexpr const char* kDataFile =
    "[Panels]\r\nCategoryTargetSection=Configuration\r\nPanelsVertical=0///Panels.@0 = no\r\n"
    "ShowHidden=1///Hidden files.\r\n"
    "[Colors]\r\nCategoryTargetSection=Colors\r\nBackColor=-1///The background.\r\n";

// The program in a folder of its own, beside a data file, with settings that the registry names.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    std::wstring Path(const std::wstring& name) const { return m_folder + name; }
    std::wstring Quoted(const std::wstring& name) const { return L"\"" + Path(name) + L"\""; }
    void Write(const std::wstring& name, const std::string& bytes) const;
    std::string Read(const std::wstring& name) const;
    // Puts a program into the folder that was built for the tests.
    void AddProgram(const std::wstring& builtPath) const;

private:
    std::wstring m_folder;
};

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

    // Waits until the key list says no more and no less.
    bool WaitForRows(const Strings& rows) const;
    HWND Control(int id) const { return FindControl(WaitForWindow(), id); }
    // A click on a row, for Type.
    std::string ClickOn(int row) const;

private:
    PROCESS_INFORMATION m_process = {};
};

// Keys and mouse through the X server, from the tool xdotool: "key Down", "mousemove 10 20", once
// it sends keys to the window. Windows may call it the foreground window before that.
void Type(HWND window, const std::string& arguments);

}  // namespace tamarind
