#pragma once

#include <windows.h>

#include <string>

namespace tamarind {

// Gives a window other bounds, in pixels of the screen or of its parent, and nothing else.
void SetWindowBounds(HWND window, const RECT& bounds);

// Where a window is, in pixels of the screen or of its parent's client area.
RECT BoundsOf(HWND window);
RECT BoundsInParent(HWND child);

SIZE SizeOf(const RECT& bounds);

// Of what is inside a window's frame, in pixels.
RECT ClientAreaOf(HWND window);
SIZE ClientSizeOf(HWND window);

// Sends a message without parameters to all windows in a window.
void SendToDescendants(HWND window, UINT message);

// Moves a window to the middle of the screen.
void CenterForm(HWND window);

// The same bounds, moved, and made smaller if need be, so that they lie on the nearest monitor
// outside its taskbar. In pixels of the screen.
RECT MovedOntoMonitor(const RECT& bounds);

// Whether a window runs from right to left: coordinates in it, and the places of what is in it the
// next time that is placed. Controls made in it later are not mirrored by themselves.
void SetMirrored(HWND window, bool isMirrored);

std::wstring TextOfWindow(HWND window);

}  // namespace tamarind
