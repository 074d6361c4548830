#pragma once

#include <windows.h>

namespace tamarind {

// A function of the system's dialogs, or null. Their library is loaded when one is first needed: it
// brings many others with it, and most starts of the program need none.
template <typename Function>
Function DialogFunction(const char* name) {
    static const HMODULE library = LoadLibraryW(L"comdlg32.dll");
    const FARPROC address = library != nullptr ? GetProcAddress(library, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

}  // namespace tamarind
