#pragma once

#include <windows.h>

namespace tamarind {

// A function of a system library, which is loaded now if it is not, or null where the system has no
// such library or function. For libraries that bring many others with them, which most starts of
// the program do not need, and for functions that Windows 7 lacks: it could not start a program
// that is linked to them.
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
