#include "ui/toolkit/Colors.h"

#include <algorithm>
#include <cmath>

namespace tamarind {
namespace {

// The relative luminance of WCAG 2.
double LuminanceOf(COLORREF color) {
    const auto linear = [](int value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

}  // namespace

double ContrastOf(COLORREF left, COLORREF right) {
    const auto [dark, light] = std::minmax({LuminanceOf(left), LuminanceOf(right)});
    return (light + 0.05) / (dark + 0.05);
}

COLORREF ReadableOn(COLORREF background, COLORREF wanted) {
    constexpr double kReadable = 4.5;
    constexpr COLORREF kBlack = RGB(0, 0, 0);
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    return ContrastOf(background, wanted) >= kReadable   ? wanted
           : ContrastOf(background, kBlack) >= kReadable ? kBlack
                                                         : kWhite;
}

}  // namespace tamarind
