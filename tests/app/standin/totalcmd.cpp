// Stands in for Total Commander where the tests need one: it keeps its settings file in memory from
// its start on and writes it back when it is closed. Beside it, it notes each start's command line
// in "started.txt"; while there is a file "refuse", it does not close.
#include <windows.h>

#include <string>

namespace {

std::wstring settingsPath;
std::string settingsBytes;

std::wstring Beside(const wchar_t* name) {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind(L'\\') + 1) + name;
}

std::string ReadBytes(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(file == INVALID_HANDLE_VALUE ? 0 : GetFileSize(file, nullptr), '\0');
    DWORD count = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
    return bytes;
}

void WriteBytes(const std::wstring& path, const std::string& bytes, DWORD disposition) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition, 0, nullptr);
    SetFilePointer(file, 0, nullptr, disposition == OPEN_ALWAYS ? FILE_END : FILE_BEGIN);
    DWORD count = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
}

// The path in quotes behind /i= or /f=.
std::wstring PathOnCommandLine(const std::wstring& line) {
    for (const wchar_t* option : {L" /i=\"", L" /f=\""}) {
        const std::size_t start = line.find(option);
        if (start != std::wstring::npos) {
            const std::size_t path = start + 5;
            return line.substr(path, line.find(L'"', path) - path);
        }
    }
    return {};
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            if (GetFileAttributesW(Beside(L"refuse").c_str()) == INVALID_FILE_ATTRIBUTES) {
                WriteBytes(settingsPath, settingsBytes, CREATE_ALWAYS);
                DestroyWindow(window);
            }
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    const std::wstring line = GetCommandLineW();
    settingsPath = PathOnCommandLine(line);
    settingsBytes = ReadBytes(settingsPath);
    WNDCLASSW info{};
    info.lpfnWndProc = Procedure;
    info.hInstance = instance;
    info.lpszClassName = L"TTOTAL_CMD";
    RegisterClassW(&info);
    const HWND window =
        CreateWindowW(info.lpszClassName, L"Total Commander's stand-in", WS_OVERLAPPEDWINDOW, 900,
                      700, 300, 200, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, showCommand);
    // Last, so that whoever reads it finds the window and the settings read.
    WriteBytes(Beside(L"started.txt"), std::string(line.begin(), line.end()) + "\n", OPEN_ALWAYS);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
