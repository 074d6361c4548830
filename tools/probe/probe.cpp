// Reads a running editor from outside, for scripts: its caption, a part of its status bar; or asks
// it to close.

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cwchar>
#include <memory>
#include <optional>
#include <string>

namespace {

constexpr DWORD kAnswerTimeoutMs = 5000;

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

// Memory inside the process of another window, where that window can put an answer.
class RemoteBuffer {
public:
    RemoteBuffer(HWND window, size_t bytes) : m_bytes(bytes) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_process.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ, FALSE, process));
        if (m_process) {
            m_memory = VirtualAllocEx(m_process.get(), nullptr, bytes, MEM_COMMIT | MEM_RESERVE,
                                      PAGE_READWRITE);
        }
    }
    ~RemoteBuffer() {
        if (m_memory) {
            VirtualFreeEx(m_process.get(), m_memory, 0, MEM_RELEASE);
        }
    }
    RemoteBuffer(const RemoteBuffer&) = delete;
    RemoteBuffer& operator=(const RemoteBuffer&) = delete;

    // The address in the other process; null when there is no access to it.
    void* Address() const { return m_memory; }
    bool Read(void* target) const {
        SIZE_T count = 0;
        return ReadProcessMemory(m_process.get(), m_memory, target, m_bytes, &count) &&
               count == m_bytes;
    }

private:
    OwnedHandle m_process;
    void* m_memory = nullptr;
    size_t m_bytes;
};

std::optional<LRESULT> Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerTimeoutMs,
                             &answer)) {
        return std::nullopt;
    }
    return static_cast<LRESULT>(answer);
}

BOOL CALLBACK KeepStatusBar(HWND window, LPARAM found) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    if (std::wcscmp(name, STATUSCLASSNAMEW) != 0) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND FindStatusBar(HWND window) {
    HWND found = nullptr;
    EnumChildWindows(window, KeepStatusBar, reinterpret_cast<LPARAM>(&found));
    return found;
}

// The text of one part, counted from 0; nothing when there is no such part or no answer.
std::optional<std::wstring> StatusText(HWND statusBar, WPARAM part) {
    const auto parts = Ask(statusBar, SB_GETPARTS, 0, 0);
    if (!parts || part >= static_cast<WPARAM>(*parts)) {
        return std::nullopt;
    }
    const auto length = Ask(statusBar, SB_GETTEXTLENGTHW, part, 0);
    if (!length) {
        return std::nullopt;
    }
    std::wstring text(LOWORD(*length) + size_t{1}, L'\0');
    const RemoteBuffer buffer(statusBar, text.size() * sizeof(wchar_t));
    if (!buffer.Address() ||
        !Ask(statusBar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(buffer.Address())) ||
        !buffer.Read(text.data())) {
        return std::nullopt;
    }
    text.resize(std::wcslen(text.c_str()));
    return text;
}

std::optional<std::wstring> Caption(HWND window) {
    wchar_t text[1024] = L"";
    const auto length =
        Ask(window, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(&text[0]));
    if (!length) {
        return std::nullopt;
    }
    return std::wstring(text);
}

int PrintUtf8(const std::optional<std::wstring>& text, const char* whatIsMissing) {
    if (!text) {
        std::fprintf(stderr, "probe: %s\n", whatIsMissing);
        return 1;
    }
    const int units = static_cast<int>(text->size());
    const int bytes =
        WideCharToMultiByte(CP_UTF8, 0, text->data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text->data(), units, utf8.data(), bytes, nullptr, nullptr);
    std::printf("%s\n", utf8.c_str());
    return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const std::wstring command = argc > 1 ? argv[1] : L"";
    const bool isStatus = command == L"status" && argc == 3;
    if (!isStatus && !((command == L"caption" || command == L"close") && argc == 2)) {
        std::fputs("usage: probe caption | probe status PART | probe close\n", stderr);
        return 2;
    }
    const HWND window = FindWindowW(L"frmMain", nullptr);
    if (!window) {
        std::fputs("probe: no window of the class frmMain\n", stderr);
        return 1;
    }
    if (isStatus) {
        const HWND statusBar = FindStatusBar(window);
        if (!statusBar) {
            std::fputs("probe: the window has no status bar\n", stderr);
            return 1;
        }
        return PrintUtf8(StatusText(statusBar, std::wcstoul(argv[2], nullptr, 10)),
                         "the status bar has no such part, or does not answer");
    }
    if (command == L"caption") {
        return PrintUtf8(Caption(window), "the window does not answer");
    }
    if (!PostMessageW(window, WM_CLOSE, 0, 0)) {
        std::fputs("probe: the window cannot be asked to close\n", stderr);
        return 1;
    }
    return 0;
}
