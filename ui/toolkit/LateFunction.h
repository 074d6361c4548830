#pragma once

#include <windows.h>

namespace tamarind {

// Makes Windows look for libraries in its own folder only, whoever loads them by their bare names.
// The folders of the program and of the files that it opens may be writable by others, who could
// plant a library there. Does nothing on Windows 7 without update KB2533623.
void SearchSystemFolderOnly();

// A library of the system, loaded from the system's folder if it is not loaded yet; null if there
// is none of that name. It is never unloaded.
HMODULE SystemLibrary(const wchar_t* name);

// A function of such a library, or null where the system has no such library or function. For
// libraries that bring many others with them, which most starts of the program do not need, and for
// functions that Windows 7 lacks: it could not start a program that is linked to them.
template <typename Function>
Function LateFunction(const wchar_t* library, const char* name) {
    const HMODULE module = SystemLibrary(library);
    const FARPROC address = module != nullptr ? GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

// One of the system's dialogs for files, colors and fonts.
template <typename Function>
Function DialogFunction(const char* name) {
    return LateFunction<Function>(L"comdlg32.dll", name);
}

}  // namespace tamarind
