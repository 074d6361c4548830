#include "ui/toolkit/MarkedText.h"

#include <algorithm>
#include <string>

#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {
namespace {

constexpr COLORREF kMarkBackground = RGB(255, 242, 179);

void DrawPiece(HDC dc, POINT at, const RECT& clip, std::wstring_view piece) {
    ExtTextOutW(dc, at.x, at.y, ETO_CLIPPED, &clip, piece.data(), static_cast<UINT>(piece.size()),
                nullptr);
}

// As much of the text as fits, with dots behind it if that is not all.
std::wstring Fitting(HDC dc, std::wstring_view text, LONG width) {
    constexpr std::wstring_view kDots = L"...";
    if (TextWidth(dc, text) <= width) {
        return std::wstring(text);
    }
    int count = 0;
    SIZE size{};
    const LONG room = std::max<LONG>(0, width - TextWidth(dc, kDots));
    GetTextExtentExPointW(dc, text.data(), static_cast<int>(text.size()), static_cast<int>(room),
                          &count, nullptr, &size);
    return std::wstring(text.substr(0, static_cast<std::size_t>(count))).append(kDots);
}

}  // namespace

void DrawMark(HDC dc, POINT at, std::wstring_view piece, COLORREF color, const RECT& clip) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const COLORREF readable = ReadableOn(kMarkBackground, color);
    const auto fill = [&](LONG top, LONG bottom, COLORREF with) {
        RECT area{at.x, top, at.x + TextWidth(dc, piece), bottom};
        if (IntersectRect(&area, &area, &clip)) {
            const UniqueBrush brush(CreateSolidBrush(with));
            FillRect(dc, &area, brush.Get());
        }
    };
    fill(at.y, at.y + metrics.tmHeight, kMarkBackground);
    const LONG line = at.y + metrics.tmAscent + 1;
    fill(line, line + std::max<LONG>(1, metrics.tmHeight / 16), readable);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, readable);
    DrawPiece(dc, at, clip, piece);
}

void DrawMarkedLine(HDC dc, const RECT& bounds, std::wstring_view text,
                    const std::vector<MarkedPart>& marks, COLORREF color, COLORREF background) {
    const UniqueBrush brush(CreateSolidBrush(background));
    FillRect(dc, &bounds, brush.Get());
    const std::wstring shown = Fitting(dc, text, bounds.right - bounds.left);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const POINT at{bounds.left, (bounds.top + bounds.bottom - metrics.tmHeight) / 2};
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    DrawPiece(dc, at, bounds, shown);
    for (const MarkedPart& mark : marks) {
        if (mark.start < shown.size()) {
            const std::wstring_view before = std::wstring_view(shown).substr(0, mark.start);
            DrawMark(dc, {at.x + TextWidth(dc, before), at.y},
                     std::wstring_view(shown).substr(mark.start, mark.length), color, bounds);
        }
    }
}

}  // namespace tamarind
