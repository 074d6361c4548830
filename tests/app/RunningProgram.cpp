#include "tests/app/RunningProgram.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/text/WideText_win32.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

PROCESS_INFORMATION StartProgram(const std::wstring& path, std::wstring commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                   &startup, &process);
    CloseHandle(process.hThread);
    return process;
}

}  // namespace

void ProgramTest::SetUp() {
    static int number = 0;
    m_folder = std::filesystem::temp_directory_path() /
               (L"tamarind_app_" + std::to_wstring(GetCurrentProcessId()) + L"_" +
                std::to_wstring(++number) + L"\\");
    CreateDirectoryW(m_folder.c_str(), nullptr);
    AddProgram(L"..\\bin\\TamarindEditor.exe");
    Write(L"Wincmd.ini", kSettings);
    Write(L"data.tmdf", kDataFile);
    const std::wstring path = Path(L"Wincmd.ini");
    RegSetKeyValueW(HKEY_CURRENT_USER, kTotalCommanderKey, L"IniFileName", REG_SZ, path.c_str(),
                    static_cast<DWORD>(2 * path.size() + 2));
}

void ProgramTest::TearDown() {
    RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey);
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

void ProgramTest::Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(std::filesystem::path(Path(name)), std::ios::binary) << bytes;
}

std::string ProgramTest::Read(const std::wstring& name) const {
    std::ifstream file(std::filesystem::path(Path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ProgramTest::AddProgram(const wchar_t* builtPath) const {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const auto program = std::filesystem::path(path).replace_filename(builtPath);
    CopyFileW(program.c_str(), Path(program.filename()).c_str(), FALSE);
}

RunningProgram::RunningProgram(const std::wstring& path, const std::wstring& arguments)
    : m_process(StartProgram(path, L"\"" + path + L"\" " + arguments)) {}

RunningProgram::~RunningProgram() {
    TerminateProcess(m_process.hProcess, 1);
    WaitForEnd();
    CloseHandle(m_process.hProcess);
}

HWND RunningProgram::WaitForWindow(const wchar_t* windowClass) const {
    HWND found = nullptr;
    WaitUntil([&] {
        DWORD process = 0;
        found = nullptr;
        do {
            found = FindWindowExW(nullptr, found, windowClass, nullptr);
            GetWindowThreadProcessId(found, &process);
        } while (found != nullptr && (process != m_process.dwProcessId || !IsWindowVisible(found)));
        return found != nullptr;
    });
    return found;
}

std::string RunningProgram::Answer(int button) const {
    std::string told;
    const HWND box = WaitForWindow(L"#32770");
    for (const HWND control : ChildrenOf(box)) {
        told += TextOf(control) + "\n";
    }
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
    return told;
}

bool RunningProgram::WaitForEnd() const {
    return WaitForSingleObject(m_process.hProcess, 10000) == WAIT_OBJECT_0;
}

std::string RunningProgram::State() const {
    const HWND box = Control(kIdTxtInplaceEdit);
    const int focus = FocusBeside(WaitForWindow());
    if (focus == kIdTxtInplaceEdit && IsWindowVisible(box)) {
        return "[" + TextOf(box) + "]";
    }
    std::string state = IsWindowVisible(box)            ? "(box)"
                        : focus == kIdListView1         ? "list:"
                        : focus == kIdTreeView1         ? "tree:"
                        : focus == kIdTxtValue          ? "value:"
                        : focus == kIdTxtDescriptionBox ? "description:"
                        : focus == kIdTxtFilter         ? "filter:"
                                                        : "(none)";
    for (const std::string& row : RowsIn(Control(kIdListView1))) {
        state += " " + row;
    }
    return state;
}

bool RunningProgram::WaitForState(const std::string& state) const {
    return WaitUntil([&] { return State() == state; });
}

void RunningProgram::TakeSteps(
    const std::vector<std::pair<std::string, std::string>>& steps) const {
    for (const auto& [input, state] : steps) {
        Type(WaitForWindow(), input);
        ASSERT_TRUE(WaitForState(state)) << input << ": " << State();
    }
}

std::string RunningProgram::ClickOn(int row) const {
    const HWND list = Control(kIdListView1);
    const RECT bounds = PlaceOfRow(list, row, LVIR_LABEL);
    POINT at = {bounds.left + 30, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(list, &at);
    return "mousemove " + std::to_string(at.x) + " " + std::to_string(at.y) + " click 1";
}

// Waits outside: the X server's own word for the focus is the only one that counts. Wine keeps the
// number of a window's X window in a property.
void Type(HWND window, const std::string& input) {
    const std::string arguments = input.starts_with("mouse") ? input : "key " + input;
    HANDLE outer = nullptr;
    WaitUntil([&] { return (outer = GetPropW(window, L"__wine_x11_whole_window")) != nullptr; });
    const std::wstring number = std::to_wstring(reinterpret_cast<std::uintptr_t>(outer));
    CloseHandle(StartProgram(L"\\\\?\\unix\\bin\\sh",
                             L"sh -c \"for try in $(seq 500); do [ $(xdotool getwindowfocus) = " +
                                 number + L" ] && break; sleep 0.02; done; xdotool " +
                                 Widen(arguments) + L"\"")
                    .hProcess);
}

}  // namespace tamarind
