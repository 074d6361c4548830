#pragma once

#include <windows.h>

namespace tamarind {

// The screen resolution that Windows had when the program started.
int SystemDpi();

// The resolution of the monitor that a window is on, where Windows tells it; else the system's.
int WindowDpi(HWND window);

// GetSystemMetrics for a resolution.
int SystemMetric(int index, int dpi);

}  // namespace tamarind
