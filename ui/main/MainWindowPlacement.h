#pragma once

#include <windows.h>

#include "model/program/Settings.h"

namespace tamarind {

struct WindowPlace {
    RECT bounds{};  // in pixels of the screen, of the window that is not maximized
    bool isMaximized = false;
};

// The smallest size that the main window takes, in pixels.
SIZE LeastMainWindowSize(int dpi);

// Where the settings want the main window, moved onto the nearest monitor
// and of a usable size.
WindowPlace RestoreMainWindowPlacement(const Settings& settings);

// Puts the window's present place into the settings; a minimized window leaves the former bounds,
// and so does one that stands where they put it.
void CaptureMainWindowPlacement(HWND window, Settings& settings);

}  // namespace tamarind
