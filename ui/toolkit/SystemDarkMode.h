#pragma once

#include <windows.h>

namespace tamarind {

// Asks Windows to draw what only it can draw dark: title bars, scroll bars and the frames of menus.
// Does nothing where Windows cannot.
void UseSystemDarkMode(bool isDark);
void UseSystemDarkModeFor(HWND window, bool isDark);

}  // namespace tamarind
