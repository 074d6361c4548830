// Stands in for Total Commander where the tests need one: it keeps its settings file in memory from
// its start on and writes it back when it is closed. Beside that file, it notes each command line
// in "started.txt"; while there is a file "refuse", it does not close.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

std::filesystem::path settingsPath;
std::string settingsBytes;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CLOSE) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (!exists(settingsPath.parent_path() / L"refuse")) {
        std::ofstream(settingsPath, std::ios::binary) << settingsBytes;
        PostQuitMessage(0);
    }
    return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    const std::wstring line = GetCommandLineW();
    const std::size_t path = line.find(L" /i=\"") + 5;
    settingsPath = line.substr(path, line.find(L'"', path) - path);
    std::ifstream file(settingsPath, std::ios::binary);
    settingsBytes.assign(std::istreambuf_iterator<char>(file), {});
    file.close();
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
    std::ofstream(settingsPath.parent_path() / L"started.txt", std::ios::app | std::ios::binary)
        << std::filesystem::path(line).string() + "\n";
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
