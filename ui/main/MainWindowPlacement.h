#pragma once

#include <windows.h>

#include "model/Settings.h"

namespace tamarind {

struct WindowPlace {
    RECT bounds{};  // in pixels of the screen, of the window that is not maximized
    bool isMaximized = false;
};

// Where the settings want the main window, moved onto the nearest monitor.
WindowPlace RestoreMainWindowPlacement(const Settings& settings);

// Puts the window's present place into the settings; a minimized window leaves the former bounds.
void CaptureMainWindowPlacement(HWND window, Settings& settings);

}  // namespace tamarind
