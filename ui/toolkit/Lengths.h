#pragma once

#include <compare>
#include <cstdint>

namespace tamarind {

// A length with its unit in its type, so that the two cannot be mixed up: the size of a pixel
// depends on the DPI of the window, a twip is always 1/1440 inch. Settings are in twips, Windows
// takes pixels. 120 twips are 8 pixels at 96 DPI and 16 at 192.
template <typename Unit>
struct Length {
    std::int32_t value = 0;

    friend constexpr bool operator==(Length a, Length b) { return a.value == b.value; }
    friend constexpr auto operator<=>(Length a, Length b) { return a.value <=> b.value; }
    friend constexpr Length operator+(Length a, Length b) { return {a.value + b.value}; }
    friend constexpr Length operator-(Length a, Length b) { return {a.value - b.value}; }
};
using Pixels = Length<struct PixelUnit>;
using Twips = Length<struct TwipUnit>;

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kDesignDpi = 96;  // of lengths in pixels that stand in the source

// `value` * `numerator` / `denominator`, rounded to the nearest whole number; halves away from
// zero.
constexpr std::int32_t Scaled(std::int32_t value, int numerator, int denominator) {
    const std::int64_t product = std::int64_t{value} * numerator;
    const std::int64_t half = denominator / 2;
    return static_cast<std::int32_t>((product < 0 ? product - half : product + half) / denominator);
}

constexpr Pixels ToPixels(Twips length, int dpi) {
    return {Scaled(length.value, dpi, kTwipsPerInch)};
}

constexpr Twips ToTwips(Pixels length, int dpi) {
    return {Scaled(length.value, kTwipsPerInch, dpi)};
}

// The same, but `stored` stays if it means these pixels already: a window that was not moved is
// stored as it was, whatever rounding would make of it.
constexpr Twips ToTwips(Pixels length, int dpi, Twips stored) {
    return ToPixels(stored, dpi) == length ? stored : ToTwips(length, dpi);
}

// A length in pixels at 96 DPI, in which the source gives lengths, as pixels at `dpi`.
constexpr int ScaledPixels(int designPixels, int dpi) {
    return Scaled(designPixels, dpi, kDesignDpi);
}

}  // namespace tamarind
