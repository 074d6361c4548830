#pragma once

#include <windows.h>

#include "model/program/OwnSettings.h"

namespace tamarind {

// Where a window is shown.
struct WindowPlace {
    RECT bounds{};  // in pixels of the screen, of the window that is not maximized
    bool isMaximized = false;
};

// The smallest size of the main window in pixels.
SIZE LeastMainWindowSize(int dpi);

// The place that the settings name, on the nearest monitor and of a usable size.
WindowPlace RestoreMainWindowPlacement(const OwnSettings& settings);

// Puts the place of the window into the settings, in twips. A minimized window leaves the bounds in
// them as they are, and so does a window that stands exactly where they have put it: converting
// back and forth must not move it.
void CaptureMainWindowPlacement(HWND window, OwnSettings& settings);

}  // namespace tamarind
