#pragma once

#include <windows.h>

#include <cstdint>

namespace tamarind {

// A colour as settings store it: red, green and blue from the low byte on, or, in a negative
// number, a system colour's index in the low byte.
inline COLORREF ColorOfSetting(std::int32_t setting) {
    return setting < 0 ? GetSysColor(setting & 0xFF) : static_cast<COLORREF>(setting & 0xFFFFFF);
}

// What texts and text boxes stand on where the user wants to see how much room they have.
inline constexpr COLORREF kControlsBackColor = RGB(0, 255, 255);

}  // namespace tamarind
