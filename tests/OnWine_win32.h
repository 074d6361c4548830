#pragma once

#include <windows.h>

namespace tamarind {

// Whether the test runs under Wine, which offers this function to those who want to know. What
// needs the system below is skipped elsewhere.
inline bool IsOnWine() {
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return library != nullptr && GetProcAddress(library, "wine_get_version") != nullptr;
}

}  // namespace tamarind
