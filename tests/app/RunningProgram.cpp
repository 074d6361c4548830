#include "tests/app/RunningProgram.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/WideText_win32.h"
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

// Memory of another process, in which its controls can leave what they are asked for.
class RemoteMemory {
public:
    RemoteMemory(HANDLE process, std::size_t size)
        : m_process(process),
          m_memory(VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE)) {}
    ~RemoteMemory() { VirtualFreeEx(m_process, m_memory, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    char* At(std::size_t offset) const { return static_cast<char*>(m_memory) + offset; }
    template <typename T>
    void Write(const T& value) const {
        WriteProcessMemory(m_process, m_memory, &value, sizeof value, nullptr);
    }
    template <typename T>
    void Read(T& value) const {
        ReadProcessMemory(m_process, m_memory, &value, sizeof value, nullptr);
    }
    std::string ReadText(std::size_t offset) const {
        std::wstring text(kTextUnits, L'\0');
        ReadProcessMemory(m_process, At(offset), text.data(), 2 * kTextUnits, nullptr);
        return Narrow(text.c_str());
    }

private:
    HANDLE m_process;
    void* m_memory;
};

void StartUnixProgram(const std::wstring& path, const std::string& commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    CreateProcessW((L"\\\\?\\unix" + path).c_str(), Widen(commandLine).data(), nullptr, nullptr,
                   FALSE, 0, nullptr, nullptr, &startup, &process);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

struct WindowSearch {
    DWORD process;
    std::wstring windowClass;
    HWND found = nullptr;
};

BOOL CALLBACK MatchWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    if (process == search.process && name == search.windowClass && IsWindowVisible(window)) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

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
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(Path(L"*").c_str(), &entry);
    do {
        const std::wstring path = Path(entry.cFileName);
        if (!DeleteFileW(path.c_str())) {
            RemoveDirectoryW(path.c_str());
        }
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    RemoveDirectoryW(m_path.c_str());
}

void ProgramFolder::Write(const std::wstring& name, const std::string& bytes) const {
    const HANDLE file =
        CreateFileW(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
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
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    std::wstring commandLine = L"\"" + folder.Path(L"TamarindEditor.exe") + L"\" " + arguments;
    CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                   &startup, &m_process);
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
    WindowSearch search = {m_process.dwProcessId, windowClass};
    EnumWindows(MatchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
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
    StartUnixProgram(L"\\bin\\sh",
                     "sh -c \"for try in $(seq 500); do [ $(xdotool getwindowfocus) = " + number +
                         " ] && break; sleep 0.02; done; xdotool " + arguments + "\"");
}

HWND RunningProgram::WaitForWindow(const wchar_t* windowClass) const {
    HWND window = nullptr;
    WaitUntil([&] { return (window = FindWindowOf(windowClass)) != nullptr; });
    return window;
}

HWND RunningProgram::WaitForDialog() {
    return WaitForWindow(L"#32770");
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
    struct Search {
        int id;
        HWND found;
    } search = {id, nullptr};
    EnumChildWindows(
        m_main,
        [](HWND child, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wanted.found = GetDlgCtrlID(child) == wanted.id ? child : wanted.found;
            return wanted.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
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

std::string RunningProgram::StatusText(int part) const {
    const RemoteMemory memory(m_process.hProcess, 2 * kTextUnits);
    SendMessageW(Control(kIdStatusBar1), SB_GETTEXTW, static_cast<WPARAM>(part),
                 reinterpret_cast<LPARAM>(memory.At(0)));
    return memory.ReadText(0);
}

std::vector<std::string> RunningProgram::ListRows(int maxRows) const {
    const HWND list = Control(kIdListView1);
    const RemoteMemory memory(m_process.hProcess, sizeof(LVITEMW) + 2 * kTextUnits);
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    std::vector<std::string> rows;
    for (int row = 0; row < count && row < maxRows; ++row) {
        LVITEMW item = {};
        item.pszText = reinterpret_cast<wchar_t*>(memory.At(sizeof item));
        item.cchTextMax = kTextUnits;
        memory.Write(item);
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(memory.At(0)));
        rows.push_back(memory.ReadText(sizeof item));
    }
    return rows;
}

bool RunningProgram::WaitForRow(int row, const std::string& text) const {
    return WaitUntil([&] {
        const auto rows = ListRows(row + 1);
        return static_cast<int>(rows.size()) > row && rows.back() == text;
    });
}

std::string RunningProgram::PlaceOfRow(int row) const {
    const HWND list = Control(kIdListView1);
    const RemoteMemory memory(m_process.hProcess, sizeof(RECT));
    RECT bounds = {LVIR_LABEL, 0, 0, 0};
    memory.Write(bounds);
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.At(0)));
    memory.Read(bounds);
    POINT at = {bounds.left + 30, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(list, &at);
    return std::to_string(at.x) + " " + std::to_string(at.y);
}

int RunningProgram::SelectedRow() const {
    return static_cast<int>(SendMessageW(Control(kIdListView1), LVM_GETNEXTITEM,
                                         static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::string RunningProgram::SelectedCategory() const {
    const HWND tree = Control(kIdTreeView1);
    const RemoteMemory memory(m_process.hProcess, sizeof(TVITEMW) + 2 * kTextUnits);
    TVITEMW item = {};
    item.mask = TVIF_TEXT | TVIF_HANDLE;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    item.pszText = reinterpret_cast<wchar_t*>(memory.At(sizeof item));
    item.cchTextMax = kTextUnits;
    memory.Write(item);
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.At(0)));
    return memory.ReadText(sizeof item);
}

void TypeWithXdotool(const std::string& arguments) {
    StartUnixProgram(L"\\usr\\bin\\xdotool", "xdotool " + arguments);
}

}  // namespace tamarind
