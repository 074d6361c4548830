#pragma once

#include <windows.h>

namespace tamarind {

// A function of a system library that is loaded when it is first needed, or null: such a library
// brings many others with it, and most starts of the program need none.
template <typename Function>
Function LateFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryW(library);
    const FARPROC address = module != nullptr ? GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

// One of the system's dialogs for files, colours and fonts.
template <typename Function>
Function DialogFunction(const char* name) {
    return LateFunction<Function>(L"comdlg32.dll", name);
}

}  // namespace tamarind
