#include "tests/app/RunningProgram.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <type_traits>

#include "core/text/WideText_win32.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

constexpr DWORD kPatienceMs = 10000;
constexpr std::size_t kTextUnits = 512;

std::wstring FolderOfThisProgram() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind(L'\\') + 1);
}

PROCESS_INFORMATION StartProgram(const std::wstring& path, std::wstring commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                   &startup, &process);
    return process;
}

// Asks a control of another process with a record that it fills in; the text that it leaves behind
// the record.
template <typename T>
std::string Ask(HANDLE process, HWND control, UINT message, int row, T& record) {
    auto* const memory = static_cast<char*>(VirtualAllocEx(
        process, nullptr, sizeof record + 2 * kTextUnits, MEM_COMMIT, PAGE_READWRITE));
    if constexpr (std::is_same_v<T, LVITEMW>) {
        record.pszText = reinterpret_cast<wchar_t*>(memory + sizeof record);
        record.cchTextMax = kTextUnits;
    }
    WriteProcessMemory(process, memory, &record, sizeof record, nullptr);
    SendMessageW(control, message, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory));
    ReadProcessMemory(process, memory, &record, sizeof record, nullptr);
    std::wstring text(kTextUnits, L'\0');
    ReadProcessMemory(process, memory + sizeof record, text.data(), 2 * kTextUnits, nullptr);
    VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    return Narrow(text.c_str());
}

// The first control with that number among those in a window, and in these.
HWND FindControl(HWND parent, int id) {
    HWND found = GetDlgItem(parent, id);
    for (HWND child = GetWindow(parent, GW_CHILD); found == nullptr && child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        found = FindControl(child, id);
    }
    return found;
}

}  // namespace

void StartDetached(const std::wstring& path, const std::wstring& commandLine) {
    const PROCESS_INFORMATION process = StartProgram(path, commandLine);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

bool WaitUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + kPatienceMs;
    while (!condition()) {
        if (GetTickCount64() > end) {
            return false;
        }
        Sleep(10);
    }
    return true;
}

ProgramFolder::ProgramFolder() {
    static int number = 0;
    wchar_t base[MAX_PATH];
    GetTempPathW(MAX_PATH, base);
    m_path = base + std::wstring(L"tamarind_app_") + std::to_wstring(GetCurrentProcessId()) + L"_" +
             std::to_wstring(++number) + L"\\";
    CreateDirectoryW(m_path.c_str(), nullptr);
    const std::wstring built = FolderOfThisProgram() + L"..\\bin\\TamarindEditor.exe";
    CopyFileW(built.c_str(), Path(L"TamarindEditor.exe").c_str(), FALSE);
}

ProgramFolder::~ProgramFolder() {
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
}

void ProgramFolder::Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(std::filesystem::path(Path(name)), std::ios::binary) << bytes;
}

std::string ProgramFolder::Read(const std::wstring& name) const {
    std::ifstream file(std::filesystem::path(Path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ProgramFolder::AddProgram(const std::wstring& builtPath) const {
    const std::wstring name = builtPath.substr(builtPath.rfind(L'\\') + 1);
    CopyFileW((FolderOfThisProgram() + builtPath).c_str(), Path(name).c_str(), FALSE);
}

RunningProgram::RunningProgram(const ProgramFolder& folder, const std::wstring& arguments) {
    const std::wstring path = folder.Path(L"TamarindEditor.exe");
    m_process = StartProgram(path, L"\"" + path + L"\" " + arguments);
}

RunningProgram::~RunningProgram() {
    if (m_main != nullptr) {
        PostMessageW(m_main, WM_CLOSE, 0, 0);
    }
    if (m_main == nullptr || !WaitForEnd()) {
        TerminateProcess(m_process.hProcess, 1);
        WaitForEnd();
    }
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

HWND RunningProgram::FindWindowOf(const wchar_t* windowClass) const {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, windowClass, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(found, &process);
        if (process == m_process.dwProcessId && IsWindowVisible(found)) {
            break;
        }
    }
    return found;
}

HWND RunningProgram::WaitForMainWindow() {
    WaitUntil([this] { return (m_main = FindWindowOf(L"frmMain")) != nullptr; });
    return m_main;
}

// Waits outside: the X server's own word for the focus is the only one that counts. Wine keeps the
// number of a window's X window in a property.
void RunningProgram::TypeInto(HWND window, const std::string& arguments) {
    HANDLE outer = nullptr;
    WaitUntil([&] { return (outer = GetPropW(window, L"__wine_x11_whole_window")) != nullptr; });
    const std::string number = std::to_string(reinterpret_cast<std::uintptr_t>(outer));
    StartDetached(L"\\\\?\\unix\\bin\\sh",
                  L"sh -c \"for try in $(seq 500); do [ $(xdotool getwindowfocus) = " +
                      Widen(number) + L" ] && break; sleep 0.02; done; xdotool " +
                      Widen(arguments) + L"\"");
}

HWND RunningProgram::WaitForWindow(const wchar_t* windowClass) const {
    HWND window = nullptr;
    WaitUntil([&] { return (window = FindWindowOf(windowClass)) != nullptr; });
    return window;
}

std::string RunningProgram::DialogText(HWND dialog) {
    std::string text;
    for (HWND child = nullptr;
         (child = FindWindowExW(dialog, child, L"Static", nullptr)) != nullptr;) {
        text += TextOf(child) + "\n";
    }
    return text;
}

void RunningProgram::Answer(HWND dialog, int button) const {
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    WaitUntil([&] { return !IsWindow(dialog); });
}

bool RunningProgram::WaitForEnd() const {
    return WaitForSingleObject(m_process.hProcess, kPatienceMs) == WAIT_OBJECT_0;
}

HWND RunningProgram::Control(int id) const {
    return FindControl(m_main, id);
}

int RunningProgram::Focus() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(m_process.dwThreadId, &info);
    return info.hwndFocus != nullptr ? GetDlgCtrlID(info.hwndFocus) : 0;
}

std::string RunningProgram::TextOf(HWND window) {
    std::wstring text(kTextUnits, L'\0');
    SendMessageW(window, WM_GETTEXT, kTextUnits, reinterpret_cast<LPARAM>(text.data()));
    return Narrow(text.c_str());
}

std::vector<std::string> RunningProgram::ListRows() const {
    const HWND list = Control(kIdListView1);
    std::vector<std::string> rows;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        LVITEMW item = {};
        rows.push_back(Ask(m_process.hProcess, list, LVM_GETITEMTEXTW, row, item));
    }
    return rows;
}

bool RunningProgram::WaitForRows(const std::vector<std::string>& rows) const {
    return WaitUntil([&] { return ListRows() == rows; });
}

bool RunningProgram::WaitForRow(int row, const std::string& text) const {
    return WaitUntil([&] {
        const auto rows = ListRows();
        return static_cast<int>(rows.size()) > row && rows[static_cast<std::size_t>(row)] == text;
    });
}

std::string RunningProgram::PlaceOfRow(int row) const {
    const HWND list = Control(kIdListView1);
    RECT bounds = {LVIR_LABEL, 0, 0, 0};
    Ask(m_process.hProcess, list, LVM_GETITEMRECT, row, bounds);
    POINT at = {bounds.left + 30, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(list, &at);
    return std::to_string(at.x) + " " + std::to_string(at.y);
}

int RunningProgram::SelectedRow() const {
    return ListView_GetNextItem(Control(kIdListView1), -1, LVNI_SELECTED);
}

void TypeWithXdotool(const std::string& arguments) {
    StartDetached(L"\\\\?\\unix\\usr\\bin\\xdotool", L"xdotool " + Widen(arguments));
}

}  // namespace tamarind
