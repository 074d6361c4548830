#pragma once

#include <windows.h>

namespace tamarind {

// Moves a window to the middle of the screen.
void CenterForm(HWND window);

// The same bounds, moved, and made smaller if need be, so that they lie on the nearest monitor
// outside its taskbar. In pixels of the screen.
RECT MovedOntoMonitor(const RECT& bounds);

}  // namespace tamarind
