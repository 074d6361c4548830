#include "ui/toolkit/LateFunction.h"

#include <string>

namespace tamarind {
namespace {

// With a closing backslash; empty if Windows does not tell.
std::wstring SystemFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    const UINT length = GetSystemDirectoryW(folder.data(), MAX_PATH);
    folder.resize(length < MAX_PATH ? length : 0);
    return folder.empty() ? folder : folder + L"\\";
}

}  // namespace

void SearchSystemFolderOnly() {
    const auto setFolders =
        LateFunction<BOOL(WINAPI*)(DWORD)>(L"kernel32.dll", "SetDefaultDllDirectories");
    if (setFolders != nullptr) {
        setFolders(LOAD_LIBRARY_SEARCH_SYSTEM32);
    }
}

HMODULE SystemLibrary(const wchar_t* name) {
    // Loaded already? Asked first, because the version of comctl32.dll from the manifest is not in
    // that folder.
    HMODULE module = nullptr;
    if (GetModuleHandleExW(0, name, &module)) {
        return module;
    }
    module = LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module != nullptr || GetLastError() != ERROR_INVALID_PARAMETER) {
        return module;
    }
    // Windows 7 without the update does not know the flag.
    const std::wstring folder = SystemFolder();
    const std::wstring path = folder + name;
    return folder.empty() ? nullptr
                          : LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace tamarind
