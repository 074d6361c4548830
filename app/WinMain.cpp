#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <string>
#include <string_view>

#include "app/Version.h"
#include "core/files/Paths.h"
#include "core/system/Environment.h"
#include "core/text/WideText_win32.h"
#include "model/program/FileAssociation.h"
#include "ui/main/WindowPrompts.h"
#include "ui/main/frmMain.h"
#include "ui/shell/RealOtherPrograms.h"
#include "ui/toolkit/CallbackGuard.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Timer.h"

namespace tamarind {
namespace {

// The longest path of Windows in UTF-16 units (Microsoft: "Maximum Path Length Limitation").
constexpr std::size_t kMaxPathUnits = 32767;

// The full path of this executable.
std::string ProgramPath() {
    std::wstring path(kMaxPathUnits + 1, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return Narrow(path);
}

// `line` in UTF-8, without the spaces and tabs around it.
std::string Trimmed(std::wstring_view line) {
    constexpr wchar_t kBlanks[] = L" \t";
    const std::size_t first = line.find_first_not_of(kBlanks);
    return first == std::wstring_view::npos
               ? std::string()
               : Narrow(line.substr(first, line.find_last_not_of(kBlanks) - first + 1));
}

// The size of the primary screen in twips, by the system's DPI.
ScreenSize MeasureScreen() {
    const auto twips = [](int metric) {
        return ToTwips(Pixels{GetSystemMetrics(metric)}, SystemDpi()).value;
    };
    return {twips(SM_CXSCREEN), twips(SM_CYSCREEN)};
}

bool IsScreenReaderRunning() {
    BOOL isRunning = FALSE;
    return SystemParametersInfoW(SPI_GETSCREENREADER, 0, &isRunning, 0) && isRunning;
}

// The primary language that Windows shows its own texts in.
std::uint16_t SystemLanguage() {
    return static_cast<std::uint16_t>(PRIMARYLANGID(GetUserDefaultUILanguage()));
}

// Runs until WM_QUIT; returns its exit code. Shortcuts of the window come before everything else.
int RunMessageLoop(frmMain& window) {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!window.TranslateKey(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

// Makes Explorer open data files with this executable. It is told only if the registration has
// changed, and shell32 is loaded only then.
void RegisterFileType(Registry& registry) {
    const std::string version =
        VersionText(TAMARIND_VERSION_MAJOR, TAMARIND_VERSION_MINOR, TAMARIND_VERSION_PATCH,
                    std::to_string(TAMARIND_VERSION_PATCH));
    if (RegisterDataFileType(registry, ProgramPath(), version)) {
        const auto notify =
            LateFunction<decltype(&SHChangeNotify)>(L"shell32.dll", "SHChangeNotify");
        if (notify != nullptr) {
            notify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
        }
    }
}

// Makes the services, the session and the main window, in this order, and runs until the window is
// closed. `commandLine` is what follows the program's name, `showCommand` one of the SW_ values.
// The result is the exit code of the process; it is EXIT_SUCCESS as well when the same data file is
// open in another window of the program, which is brought forward instead.
int Run(const std::string& commandLine, int showCommand) {
    SearchSystemFolderOnly();
    // A drive without a disk is a missing file, not a question of the system's.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES |
                     ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);

    DiskFileSystem disk;
    IniFiles files(disk);
    SystemRegistry registry;
    const ProcessEnvironment environment;
    WindowPrompts prompts(Widen(TAMARIND_PRODUCT_NAME));
    RealOtherPrograms programs;
    EditorSession session(
        {files, registry, environment, prompts, programs, AddBackslash(FolderOfPath(ProgramPath())),
         VersionText(TAMARIND_VERSION_MAJOR, TAMARIND_VERSION_MINOR, TAMARIND_VERSION_PATCH, ""),
         MeasureScreen(), IsScreenReaderRunning(), SystemLanguage()});
    session.LoadSettings();
    const std::string dataFile = session.DataFile().StartUpPath(commandLine);
    if (frmMain::BringForward(dataFile)) {
        return EXIT_SUCCESS;
    }
    frmMain window(session);
    if (!window.Create()) {
        return EXIT_FAILURE;
    }
    prompts.SetOwner(window.Handle());
    prompts.SetStyle(window.Style());
    if (!session.Activate(commandLine)) {
        return EXIT_SUCCESS;
    }
    // The user, or the settings file, may have chosen another data file during Activate.
    if (session.DataFile().Path() != dataFile && frmMain::BringForward(session.DataFile().Path())) {
        return EXIT_SUCCESS;
    }
    window.ShowFirst(showCommand);
    // Only when the window is shown: nobody waits for the registry.
    Timer afterStart([&] {
        afterStart.Stop();
        RegisterFileType(registry);
    });
    afterStart.Start(window.Handle(), USER_TIMER_MINIMUM);
    return RunMessageLoop(window);
}

}  // namespace
}  // namespace tamarind

// The signature is that of Windows.
// NOLINTNEXTLINE(readability-non-const-parameter)
int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR lpCmdLine, int nShowCmd) {
    return tamarind::Guarded(EXIT_FAILURE,
                             [&] { return tamarind::Run(tamarind::Trimmed(lpCmdLine), nShowCmd); });
}
