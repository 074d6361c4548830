#pragma once

#include <windows.h>

#include <optional>

namespace tamarind {

// The kinds of controls that are painted here in the dark palette.
enum class DarkKind { None, Button, Combo, Header, Tabs, UpDown, StatusBar, Framed };

// What kind a window is of.
DarkKind DarkKindOf(HWND window);

// Paints a control as a whole into a device context.
void PaintDark(HWND control, DarkKind kind, HDC dc);
// The frame around a control that has one.
void PaintDarkFrame(HWND control);

// Whether a message makes the control draw itself at once, past WM_PAINT.
bool DrawsAtOnce(DarkKind kind, UINT message);

}  // namespace tamarind
