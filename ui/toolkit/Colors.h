#pragma once

#include <windows.h>

#include <cstdint>

#include "ui/toolkit/Palette.h"

namespace tamarind {

// A color as settings store it: a COLORREF (red in the low byte) or, if negative, the index of a
// system color in the low byte. -2147483643 is 0x80000005, COLOR_WINDOW.
inline COLORREF ColorOfSetting(std::int32_t setting) {
    return setting < 0 ? PaletteColor(setting & 0xFF) : static_cast<COLORREF>(setting & 0xFFFFFF);
}

// The background of texts and text boxes for users who want to see how much room they have.
inline constexpr COLORREF kControlsBackColor = RGB(0, 255, 255);

// The contrast of two colors as WCAG 2 defines it, 1 to 21.
double ContrastOf(COLORREF left, COLORREF right);
// The wanted color of a text if it has a contrast of 4.5 on the background, else black or white.
COLORREF ReadableOn(COLORREF background, COLORREF wanted);

}  // namespace tamarind
