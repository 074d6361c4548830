#include "ui/shell/RealOtherPrograms.h"

#include <windows.h>

#include <shellapi.h>

#include <chrono>
#include <optional>

#include "core/WideText_win32.h"
#include "ui/shell/LateFunction.h"

namespace tamarind {
namespace {

using Clock = std::chrono::steady_clock;

HWND FindTotalCommanderWindow() {
    return FindWindowW(L"TTOTAL_CMD", nullptr);
}

// Rounded up, so that the time is over when the wait is.
DWORD MillisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return left.count() > 0 ? static_cast<DWORD>(left.count()) : 0;
}

}  // namespace

bool RealOtherPrograms::IsTotalCommanderRunning() {
    return FindTotalCommanderWindow() != nullptr;
}

void RealOtherPrograms::BringTotalCommanderToFront() {
    SetForegroundWindow(FindTotalCommanderWindow());
}

void RealOtherPrograms::CloseTotalCommander() {
    // Without a window there is nothing to close: the message would go to this program's own loop.
    if (const HWND window = FindTotalCommanderWindow()) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
}

void RealOtherPrograms::WaitHalfSecond() {
    const auto end = Clock::now() + std::chrono::milliseconds(500);
    std::optional<int> exitCode;
    while (DWORD left = MillisecondsUntil(end)) {
        MSG message{};
        if (exitCode) {
            Sleep(left);
        } else if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            MsgWaitForMultipleObjectsEx(0, nullptr, left, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        } else if (message.message == WM_QUIT) {
            exitCode = static_cast<int>(message.wParam);
        } else {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    if (exitCode) {
        PostQuitMessage(*exitCode);  // for the loop that the wait was called from
    }
}

void RealOtherPrograms::Start(const std::string& commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    std::wstring line = Widen(commandLine);  // Windows writes into it
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}

void RealOtherPrograms::OpenDocument(const std::string& path) {
    const auto execute = LateFunction<decltype(&ShellExecuteW)>(L"shell32.dll", "ShellExecuteW");
    if (execute != nullptr) {
        execute(GetActiveWindow(), L"open", Widen(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    }
}

}  // namespace tamarind
