#pragma once

#include <windows.h>

namespace tamarind {

// The DPI that the system had when the program was started; it does not change while it runs.
int SystemDpi();

// The DPI of the monitor that a window is on, if Windows tells (from Windows 10, version 1607);
// otherwise that of the system.
int WindowDpi(HWND window);

// GetSystemMetrics at a DPI, in pixels.
int SystemMetric(int index, int dpi);

}  // namespace tamarind
