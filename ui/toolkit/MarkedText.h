#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace tamarind {

// A part of a text that is marked, in UTF-16 units.
struct MarkedPart {
    std::size_t start = 0;
    std::size_t length = 0;
};

// Draws a piece of text as marked: on a background of its own, and underlined, so that no mark is
// told by color alone. `color` is that of the text around it. `clip` is in pixels of the dc.
void DrawMark(HDC dc, POINT at, std::wstring_view piece, COLORREF color, const RECT& clip);

// Draws a line of text with its marks, left in the bounds and in the middle of their height, in the
// font of the dc; what does not fit becomes dots.
void DrawMarkedLine(HDC dc, const RECT& bounds, std::wstring_view text,
                    const std::vector<MarkedPart>& marks, COLORREF color, COLORREF background);

}  // namespace tamarind
