#include "ui/shell/RealOtherPrograms.h"

#include <windows.h>

#include <shellapi.h>

#include <chrono>
#include <optional>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/LateFunction.h"

namespace tamarind {
namespace {

using Clock = std::chrono::steady_clock;

HWND FindTotalCommanderWindow() {
    return FindWindowW(L"TTOTAL_CMD", nullptr);
}

// Rounded up, so that the time is over when the wait ends.
DWORD MillisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return left.count() > 0 ? static_cast<DWORD>(left.count()) : 0;
}

}  // namespace

bool RealOtherPrograms::IsTotalCommanderRunning() {
    return FindTotalCommanderWindow() != nullptr;
}

std::string RealOtherPrograms::TotalCommanderPath() {
    constexpr DWORD kMaxPathUnits = 32768;
    DWORD process = 0;
    GetWindowThreadProcessId(FindTotalCommanderWindow(), &process);
    const UniqueObject program(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    std::wstring path(kMaxPathUnits, L'\0');
    DWORD length = kMaxPathUnits;
    const bool isTold =
        program && QueryFullProcessImageNameW(program.Get(), 0, path.data(), &length);
    path.resize(isTold ? length : 0);
    return Narrow(path);
}

void RealOtherPrograms::BringTotalCommanderToFront() {
    SetForegroundWindow(FindTotalCommanderWindow());
}

void RealOtherPrograms::CloseTotalCommander() {
    // A message posted to a null window would go to this program's own message loop.
    if (const HWND window = FindTotalCommanderWindow()) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_closing.Reset(OpenProcess(SYNCHRONIZE, FALSE, process));
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
}

// A WM_QUIT that arrives meanwhile ends the handling of messages, but not the wait, and is passed
// on afterwards.
void RealOtherPrograms::Wait(int milliseconds, HANDLE process) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    const DWORD count = process != nullptr ? 1 : 0;
    std::optional<int> exitCode;
    while (DWORD left = MillisecondsUntil(end)) {
        MSG message{};
        const DWORD input = exitCode ? 0 : QS_ALLINPUT;
        if (count != 0 && WaitForSingleObject(process, 0) == WAIT_OBJECT_0) {
            break;
        }
        if (exitCode || !PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            MsgWaitForMultipleObjectsEx(count, &process, left, input, MWMO_INPUTAVAILABLE);
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

void RealOtherPrograms::WaitHalfSecond() {
    Wait(500, nullptr);
}

bool RealOtherPrograms::WaitForTotalCommanderEnd(int milliseconds) {
    if (!m_closing) {
        return !IsTotalCommanderRunning();
    }
    Wait(milliseconds, m_closing.Get());
    const bool hasEnded = WaitForSingleObject(m_closing.Get(), 0) == WAIT_OBJECT_0;
    m_closing.Reset();
    return hasEnded;
}

void RealOtherPrograms::Start(const std::string& path, const std::string& arguments) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    const std::wstring program = Widen(path);
    std::wstring line = L"\"" + program + L"\"" + Widen(arguments);  // Windows writes into it
    CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                   &startup, &process);
    const UniqueObject thread(process.hThread);
    const UniqueObject started(process.hProcess);
}

void RealOtherPrograms::OpenDocument(const std::string& path) {
    const auto execute = LateFunction<decltype(&ShellExecuteW)>(L"shell32.dll", "ShellExecuteW");
    if (execute != nullptr) {
        execute(GetActiveWindow(), L"open", Widen(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    }
}

}  // namespace tamarind
