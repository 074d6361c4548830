#pragma once

#include <windows.h>

#include <optional>

namespace tamarind {

// Makes a window and all that is in it dark, or light again, as the palette is. Controls that
// Windows cannot draw dark are painted here then. To be called for windows that are made later,
// too.
void ApplyPalette(HWND window);
// The same for all windows of the program. To be called when the palette has changed.
void ApplyPaletteToProgram();
// The same for a control that was made in such a window.
void ApplyPaletteToControl(HWND control);

// Answers the messages by which a window is asked for the colors of its background, its controls
// and its menus while the palette is dark. Nothing for others.
std::optional<LRESULT> AnswerPaletteMessage(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);

// Gives the entries of a menu, or of a menu bar, the present look, once they have their texts.
void ApplyPaletteToMenu(HMENU menu, bool isBar);

// Paints what a menu bar has no entries on. To be called after Windows has drawn the frame of the
// window.
void PaintMenuBarRest(HWND window);

}  // namespace tamarind
