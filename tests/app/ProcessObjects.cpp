#include "tests/app/ProcessObjects.h"

#include <vector>

// Wine leaves out the functions that count objects, but has the tables that they would read.
namespace tamarind {
namespace {

constexpr int kProcessBasicInformation = 0;
constexpr int kExtendedHandleInformation = 64;

template <typename Function>
Function* FindInSystem(const char* name) {
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// A table of the handles of all processes: their number, a word of no meaning, and then five words
// for each, the second one of which is the process.
std::size_t CountHandles(DWORD process) {
    constexpr std::size_t kWords = 5;
    static const auto query =
        FindInSystem<LONG WINAPI(int, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
    std::vector<ULONG_PTR> table(1 << 18);
    if (query(kExtendedHandleInformation, table.data(),
              static_cast<ULONG>(table.size() * sizeof table[0]), nullptr) != 0) {
        return 0;
    }
    std::size_t count = 0;
    for (std::size_t at = 3; at < 3 + table[0] * kWords; at += kWords) {
        count += table[at] == process ? 1 : 0;
    }
    return count;
}

// Each process sees the table of its graphics objects in its own memory. With 64 bits the process
// environment block names it at 0xF8, and an entry has 24 bytes with the kind of object at 14.
std::size_t CountGraphics(HANDLE process) {
    constexpr std::size_t kTableInBlock = 0xF8;
    constexpr std::size_t kEntries = 65536;
    constexpr std::size_t kEntryBytes = 24;
    constexpr std::size_t kKindInEntry = 14;
    static const auto query =
        FindInSystem<LONG WINAPI(HANDLE, int, void*, ULONG, ULONG*)>("NtQueryInformationProcess");
    ULONG_PTR basics[6] = {};  // the second word is the address of the environment block
    query(process, kProcessBasicInformation, basics, sizeof basics, nullptr);
    ULONG_PTR table = 0;
    std::vector<char> entries(kEntries * kEntryBytes);
    ReadProcessMemory(process, reinterpret_cast<void*>(basics[1] + kTableInBlock), &table,
                      sizeof table, nullptr);
    ReadProcessMemory(process, reinterpret_cast<void*>(table), entries.data(), entries.size(),
                      nullptr);
    std::size_t count = 0;
    for (std::size_t at = kKindInEntry; at < entries.size(); at += kEntryBytes) {
        count += entries[at] != 0 ? 1 : 0;
    }
    return count;
}

std::size_t CountWindows(DWORD process) {
    std::size_t count = 0;
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, nullptr, nullptr));) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        count += owner == process ? 1 : 0;
    }
    return count;
}

}  // namespace

ProcessObjects CountObjects(HANDLE process) {
    const DWORD id = GetProcessId(process);
    return {CountHandles(id), CountGraphics(process), CountWindows(id)};
}

}  // namespace tamarind
