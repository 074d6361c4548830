#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/WindowCalls.h"

// What tests see of windows, be they of this process or of another one.
namespace tamarind {

using Strings = std::vector<std::string>;

// Handles what is posted to this thread, timers too, until `condition` holds; false after ten
// seconds.
bool WaitUntil(const std::function<bool()>& condition);

std::vector<HWND> ChildrenOf(HWND parent);
// The control with that number among those in a window, and in these; or null.
HWND FindControl(HWND parent, int id);
// Which control has the focus of the thread that the window belongs to; 0 for none.
int FocusBeside(HWND window);

std::string TextOf(HWND window);
std::string ClassOf(HWND window);
inline LONG WidthOf(HWND window) {
    return SizeOf(BoundsOf(window)).cx;
}
inline LONG HeightOf(HWND window) {
    return SizeOf(BoundsOf(window)).cy;
}

// The height of a control's font in pixels, negative as Windows has it.
LONG FontHeightOf(HWND control);

std::string CellIn(HWND list, int row, int column);
Strings RowsIn(HWND list);
int SelectedIn(HWND list);
// In the list's pixels, all of the row or, as LVM_GETITEMRECT has it, a part.
RECT PlaceOfRow(HWND list, int row, int part = LVIR_BOUNDS);
Strings NodesIn(HWND tree);

}  // namespace tamarind
