// From the start of a process to its first idle moment, when everything is painted: the editor with
// the shipped data file and with 32,000 keys against an empty window.
//
//   bench_start EDITOR.EXE DATAFILE.TMDF EMPTY_WINDOW.EXE
//
// Peak memory is that of the process's working set.
#include <windows.h>

#include <psapi.h>

#include "bench/windows/Harness.h"

namespace tamarind::bench {
namespace {

constexpr int kRuns = 15;

struct Subject {
    const char* name;
    std::wstring commandLine;
    const wchar_t* windowClass;
    std::vector<double> times;
    std::vector<double> peaks;  // KB
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool RunOnce(Subject& subject) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    std::wstring commandLine = subject.commandLine;
    const double start = NowMs();
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        return false;
    }
    const bool isIdle = WaitForInputIdle(process.hProcess, 30000) == 0;
    subject.times.push_back(NowMs() - start);
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory);
    subject.peaks.push_back(static_cast<double>(memory.PeakWorkingSetSize) / 1024);
    const HWND window = FindWindowW(subject.windowClass, nullptr);
    PostMessageW(window, WM_CLOSE, 0, 0);
    const bool hasEnded = WaitForSingleObject(process.hProcess, 30000) == WAIT_OBJECT_0;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return isIdle && window != nullptr && hasEnded;
}

// Tells the editor where the settings file is, as Total Commander's setup does.
void NameSettingsFile(const std::wstring& path) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Ghisler\\Total Commander", L"IniFileName",
                    REG_SZ, path.c_str(), static_cast<DWORD>(2 * path.size() + 2));
}

// A copy of the editor with own settings; the command line that starts it.
std::wstring CopyWithSettings(const std::wstring& editor, const std::wstring& dataFile,
                              const std::wstring& folder, const char* lines) {
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring copy = folder + L"TamarindEditor.exe";
    CopyFileW(editor.c_str(), copy.c_str(), FALSE);
    WriteOldFile(folder + L"tamarind editors.ini",
                 std::string("[ConfigurationEditor]\r\n") + lines);
    return L"\"" + copy + L"\" \"" + dataFile + L"\"";
}

int Measure(const std::wstring& editor, const std::wstring& dataFile, const std::wstring& empty) {
    const std::wstring folder = MakeScratchFolder(L"start");
    const SampleFiles sample = MakeSample(32000);
    WriteOldFile(folder + L"data.tmdf", sample.dataFile);
    WriteOldFile(folder + L"Wincmd.ini", sample.settings);
    NameSettingsFile(folder + L"Wincmd.ini");
    const std::wstring quote = L"\"";
    Subject subjects[] = {
        {"empty window", quote + empty + quote, L"EmptyWindow", {}, {}},
        {"editor, shipped data", quote + editor + L"\" \"" + dataFile + quote, L"frmMain", {}, {}},
        {"editor, 32,000 keys",
         quote + editor + L"\" \"" + folder + L"data.tmdf\"",
         L"frmMain",
         {},
         {}},
        {"editor, light, bars on",
         CopyWithSettings(editor, dataFile, folder + L"light\\", "Theme=1\r\n"),
         L"frmMain",
         {},
         {}},
        {"editor, dark theme",
         CopyWithSettings(editor, dataFile, folder + L"dark\\", "Theme=2\r\n"),
         L"frmMain",
         {},
         {}},
        {"editor, without bars",
         CopyWithSettings(editor, dataFile, folder + L"bare\\",
                          "ValueBarVisible=0\r\nFilterBarVisible=0\r\n"),
         L"frmMain",
         {},
         {}},
    };
    // Another window keeps the desktop process alive, which the first start would pay for.
    const HWND keeper = CreateWindowExW(0, L"STATIC", L"keeper", WS_POPUP, 0, 0, 1, 1, nullptr,
                                        nullptr, nullptr, nullptr);
    for (int run = 0; run <= kRuns; ++run) {
        for (Subject& subject : subjects) {
            if (!RunOnce(subject)) {
                std::printf("%s did not start, show a window and end\n", subject.name);
                return 1;
            }
            if (run == 0) {  // a warm-up
                subject.times.clear();
                subject.peaks.clear();
            }
        }
    }
    DestroyWindow(keeper);
    const double emptyTime = Median(subjects[0].times);
    const double emptyPeak = Median(subjects[0].peaks);
    for (const Subject& subject : subjects) {
        std::printf("%-22s %7.1f ms, %.2f times the empty window; peak %7.0f KB, %.2f times\n",
                    subject.name, Median(subject.times), Median(subject.times) / emptyTime,
                    Median(subject.peaks), Median(subject.peaks) / emptyPeak);
    }
    std::printf("32,000 keys / shipped data: %.2f\n",
                Median(subjects[2].times) / Median(subjects[1].times));
    return 0;
}

}  // namespace
}  // namespace tamarind::bench

int wmain(int count, wchar_t** arguments) {
    if (count != 4) {
        std::printf("bench_start EDITOR.EXE DATAFILE.TMDF EMPTY_WINDOW.EXE\n");
        return 2;
    }
    return tamarind::bench::Measure(arguments[1], arguments[2], arguments[3]);
}
