#pragma once

#include <windows.h>

#include <string>

#include "core/text/WideText_win32.h"

namespace tamarind {

// The absolute form of a path, with backslashes only and without "." and "..". The path as it is if
// Windows cannot say.
inline std::wstring FullPath(const std::string& path) {
    const std::wstring wide = Widen(path);
    std::wstring full(wide.size() + MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(),
                                      nullptr)) >= full.size()) {
        full.resize(length + 1);
    }
    full.resize(length);
    return length == 0 ? wide : full;
}

// The usual form of a path with the prefix for long paths:
//
//   \\?\C:\a                 C:\a
//   \\?\UNC\server\share     \\server\share
//   \\?\Volume{...}\a        unchanged: it has no other form
inline std::wstring PlainPath(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\UNC\\")) {
        return L"\\\\" + path.substr(8);
    }
    const bool hasDrive = path.starts_with(L"\\\\?\\") && path.size() > 5 && path[5] == L':';
    return hasDrive ? path.substr(4) : path;
}

// The form in which Windows takes a path of any length, in UTF-16. Short paths stay as they are.
// The limit for creating folders is twelve characters lower than that for files, so that a name of
// the form 8.3 still fits (Microsoft: CreateDirectoryW).
inline std::wstring LongPath(const std::string& path) {
    constexpr std::size_t kLongestShortPath = MAX_PATH - 13;
    std::wstring full = FullPath(path);
    if (full.size() <= kLongestShortPath || full.starts_with(L"\\\\?\\")) {
        return full;
    }
    if (full.starts_with(L"\\\\")) {
        return L"\\\\?\\UNC" + full.substr(1);
    }
    return L"\\\\?\\" + full;
}

}  // namespace tamarind
