#pragma once

#include <windows.h>

namespace tamarind {

// What the user has chosen in the options. The values are those of the own settings.
enum class Theme { AsWindows, Light, Dark };

// Chooses the colors of all windows of the program. High contrast goes before every theme. Returns
// whether they are others than before.
bool UseTheme(Theme theme);
// Whether the palette is the dark one, which Windows knows nothing of.
bool IsDark();
// Whether the colors are those of high contrast, so that nobody's own ones count.
bool IsHighContrast();

// The color of a part of a window: COLOR_WINDOW and the like, as GetSysColor has them, or of the
// dark palette.
COLORREF PaletteColor(int index);
// The same as a brush, which nobody may delete.
HBRUSH PaletteBrush(int index);

// The background and text of a selected row, in a list with the focus or without it.
COLORREF SelectionColor(bool hasFocus);
COLORREF SelectionTextColor(bool hasFocus);

// A color that the user has chosen, or may have: in the dark palette and in high contrast it gives
// way to the palette's where it cannot be read on `background`, and always if it is that of the
// first start.
COLORREF ReadableColor(COLORREF chosen, bool isFirst, COLORREF background, int index);

}  // namespace tamarind
