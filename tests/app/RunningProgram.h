#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace tamarind {

// Starts a program with its command line, the program's name in it, and leaves it alone.
void StartDetached(const std::wstring& path, const std::wstring& commandLine);

// Waits until `condition` holds; false after ten seconds.
bool WaitUntil(const std::function<bool()>& condition);

// A copy of the program in a folder of its own, so that its settings start afresh.
class ProgramFolder {
public:
    ProgramFolder();
    ~ProgramFolder();
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;

    std::wstring Path(const std::wstring& name) const { return m_path + name; }
    void Write(const std::wstring& name, const std::string& bytes) const;
    std::string Read(const std::wstring& name) const;
    // Puts a program that was built for the tests into the folder.
    void AddProgram(const std::wstring& builtPath) const;

private:
    std::wstring m_path;
};

// The editor in a process of its own, seen from outside as a screen reader sees it.
class RunningProgram {
public:
    // `arguments` follow the program's name on the command line as they are.
    RunningProgram(const ProgramFolder& folder, const std::wstring& arguments);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // The main window once it is shown, or null.
    HWND WaitForMainWindow();
    // As TypeWithXdotool, once the X server sends keys to the main window, or to another one.
    // Windows may call it the foreground window before that.
    void TypeFirst(const std::string& arguments) const { TypeInto(m_main, arguments); }
    static void TypeInto(HWND window, const std::string& arguments);
    // A shown window of the program of that class, or null.
    HWND WaitForWindow(const wchar_t* windowClass) const;
    // A message box or file dialog of the program, or null.
    HWND WaitForDialog() const { return WaitForWindow(L"#32770"); }
    // The texts of a dialog's static controls, one after the other.
    static std::string DialogText(HWND dialog);
    // Presses a button of a dialog and waits until the dialog is gone.
    void Answer(HWND dialog, int button) const;
    bool WaitForEnd() const;

    HWND Control(int id) const;
    // The control with the keyboard's focus, by its number; 0 for none.
    int Focus() const;
    static std::string TextOf(HWND window);
    std::vector<std::string> ListRows() const;
    // Waits until the key list says no more and no less.
    bool WaitForRows(const std::vector<std::string>& rows) const;
    // Waits until a row of the key list says `text`.
    bool WaitForRow(int row, const std::string& text) const;
    int SelectedRow() const;
    // The middle of a row's text in pixels of the screen, as xdotool takes it: "10 20".
    std::string PlaceOfRow(int row) const;

private:
    HWND FindWindowOf(const wchar_t* windowClass) const;

    PROCESS_INFORMATION m_process = {};
    HWND m_main = nullptr;
};

// Keys and mouse through the X server, from the tool xdotool: "key Down", "mousemove 10 20".
void TypeWithXdotool(const std::string& arguments);

}  // namespace tamarind
