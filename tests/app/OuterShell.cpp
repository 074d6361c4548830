#include "tests/app/OuterShell.h"

#include "tests/ui/WindowDriver.h"

namespace tamarind {
namespace {

// Reads lines as they are added to the file; after each, "done" and a line end.
constexpr const wchar_t* kReadLines =
    L"sh -c \"idle=0; while [ $idle -lt 15000 ]; do "
    L"while read -r line; do idle=0; eval \\\"$line\\\"; echo done; done; "
    L"idle=$((idle + 1)); sleep 0.02; done\"";
constexpr DWORD kDoneBytes = 5;

UniqueFile Open(const std::wstring& path, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition, 0,
                                  nullptr));
}

}  // namespace

OuterShell::OuterShell(const std::wstring& folder)
    : m_lines(Open(folder + L"lines", CREATE_ALWAYS)),
      m_output(Open(folder + L"output", CREATE_ALWAYS)) {
    // A handle of its own: it reads from where it is, not from where the next line is written.
    const UniqueFile input = Open(folder + L"lines", OPEN_EXISTING);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = startup.hStdError = m_output.Get();
    PROCESS_INFORMATION process = {};
    std::wstring line = kReadLines;
    CreateProcessW(L"\\\\?\\unix\\bin\\sh", line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                   nullptr, &startup, &process);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

OuterShell::~OuterShell() {
    Write("exit");
}

bool OuterShell::Run(const std::string& line) {
    const DWORD wanted = GetFileSize(m_output.Get(), nullptr) + kDoneBytes;
    Write(line);
    const auto isDone = [&] { return GetFileSize(m_output.Get(), nullptr) >= wanted; };
    return WaitUntil(isDone) || WaitUntil(isDone) || WaitUntil(isDone);
}

void OuterShell::Write(const std::string& line) const {
    const std::string bytes = line + "\n";
    DWORD written = 0;
    WriteFile(m_lines.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace tamarind
