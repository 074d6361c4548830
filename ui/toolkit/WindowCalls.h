#pragma once

#include <windows.h>

#include <string>

namespace tamarind {

// Sets the bounds of a window, in pixels of the screen or of its parent. Neither its order nor the
// activation changes.
void SetWindowBounds(HWND window, const RECT& bounds);

// Where a window is, in pixels of the screen or of its parent's client area.
RECT BoundsOf(HWND window);
RECT BoundsInParent(HWND child);

SIZE SizeOf(const RECT& bounds);

// Of what is inside a window's frame, in pixels.
RECT ClientAreaOf(HWND window);
SIZE ClientSizeOf(HWND window);

// Sends a message without parameters to all child windows at any depth.
void SendToDescendants(HWND window, UINT message);

// Moves a window to the middle of the primary screen.
void CenterForm(HWND window);

// The same bounds in screen pixels, moved, and if need be made smaller, so that they lie in the
// work area of the nearest monitor.
RECT MovedOntoMonitor(const RECT& bounds);

// Makes a window run from right to left, or back: its coordinates are mirrored, and what is in it
// moves when it is placed the next time. Controls that are made in it later do not inherit this.
void SetMirrored(HWND window, bool isMirrored);

// Whether a key was down when the message came that is being handled.
bool IsKeyDown(int key);

// The whole text of a window or control, of any length.
std::wstring TextOfWindow(HWND window);

// Puts a text on the clipboard. False if another program holds it.
bool CopyToClipboard(HWND owner, const std::wstring& text);

}  // namespace tamarind
