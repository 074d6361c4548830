#pragma once

#include <windows.h>

namespace tamarind {

// From now on Windows looks for libraries in its own folder alone, whoever loads them by their bare
// name: the folders of the program and of its files are places that others may write to. Nothing
// where Windows 7 lacks the update for it.
void SearchSystemFolderOnly();

// A library of the system's, loaded now if it is not, from the system's folder alone; null where
// there is none of that name.
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

// One of the system's dialogs for files, colours and fonts.
template <typename Function>
Function DialogFunction(const char* name) {
    return LateFunction<Function>(L"comdlg32.dll", name);
}

}  // namespace tamarind
