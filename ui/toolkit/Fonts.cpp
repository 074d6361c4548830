#include "ui/toolkit/Fonts.h"

#include <algorithm>
#include <utility>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/SystemLook.h"

namespace tamarind {
namespace {

constexpr int kPointsPerInch = 72;
constexpr int kMessagePoints = 9;  // of the font of message boxes, as Windows has it at first

constexpr int kBold = 1;
constexpr int kItalic = 2;
constexpr int kStrikeOut = 4;
constexpr int kUnderline = 8;

// The bitmap font of that name has only three sizes. Users mean its outline twin.
std::wstring_view DrawnFace(std::wstring_view name) {
    constexpr std::wstring_view kBitmapFace = L"MS Sans Serif";
    const bool isBitmapFace =
        name.size() == kBitmapFace.size() &&
        CompareStringOrdinal(name.data(), static_cast<int>(name.size()), kBitmapFace.data(),
                             static_cast<int>(kBitmapFace.size()), TRUE) == CSTR_EQUAL;
    return isBitmapFace ? L"Microsoft Sans Serif" : name;
}

}  // namespace

LOGFONTW LogicalFontOf(const UserFont& font, int dpi) {
    LOGFONTW logical{};
    logical.lfHeight = -Scaled(font.points, dpi, kPointsPerInch);
    logical.lfWeight = (font.style & kBold) != 0 ? FW_BOLD : FW_NORMAL;
    logical.lfItalic = (font.style & kItalic) != 0;
    logical.lfStrikeOut = (font.style & kStrikeOut) != 0;
    logical.lfUnderline = (font.style & kUnderline) != 0;
    logical.lfCharSet = static_cast<BYTE>(font.charset);
    font.name.copy(logical.lfFaceName, LF_FACESIZE - 1);
    return logical;
}

int StyleOf(const LOGFONTW& font) {
    return (font.lfWeight >= FW_BOLD ? kBold : 0) | (font.lfItalic ? kItalic : 0) |
           (font.lfStrikeOut ? kStrikeOut : 0) | (font.lfUnderline ? kUnderline : 0);
}

UniqueFont MakeUserFont(const UserFont& font, int dpi) {
    UserFont drawn = font;
    drawn.name = DrawnFace(font.name);
    const LOGFONTW logical = LogicalFontOf(drawn, dpi);
    return UniqueFont(CreateFontIndirectW(&logical));
}

void ApplyUserFont(Control& control, const UserFont& font, bool withUserSize, int points, int dpi) {
    UserFont drawn = font;
    if (!withUserSize) {
        drawn.points = points;
        drawn.style = 0;
    }
    if (UniqueFont made = MakeUserFont(drawn, dpi)) {
        control.SetFont(std::move(made));
    }
}

int LineHeightOf(HFONT font) {
    const ScreenDC dc;
    const SelectedObject selected(dc.Get(), font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.Get(), &metrics);
    return static_cast<int>(metrics.tmHeight);
}

int SignButtonWidth(HFONT font, int designPixels, int dpi) {
    constexpr int kMargin = 4;
    return std::max(ScaledPixels(designPixels, dpi),
                    LineHeightOf(font) + ScaledPixels(2 * kMargin, dpi));
}

int TextWidth(HWND window, const std::wstring& text) {
    const ScreenDC dc(window);
    const SelectedObject font(dc.Get(),
                              reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    return TextWidth(dc.Get(), text);
}

int TextWidth(HDC dc, std::wstring_view text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

UniqueFont MakeMessageFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
        return {};
    }
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = Scaled(font.lfHeight, dpi, SystemDpi());
    // Where Windows has not enlarged it already.
    const int scale = SystemLook::Present().TextScale();
    if (scale > 100 && font.lfHeight < 0) {
        const int points = Scaled(kMessagePoints, scale, 100);
        font.lfHeight = std::min<LONG>(font.lfHeight, -Scaled(points, dpi, kPointsPerInch));
    }
    return UniqueFont(CreateFontIndirectW(&font));
}

UniqueFont MakeFixedPitchFont(int dpi) {
    LOGFONTW font{};
    GetObjectW(MakeMessageFont(dpi).Get(), sizeof(font), &font);
    const std::wstring name = HasFont(L"Consolas") ? L"Consolas" : L"Courier New";
    font.lfFaceName[name.copy(font.lfFaceName, LF_FACESIZE - 1)] = L'\0';
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    return UniqueFont(CreateFontIndirectW(&font));
}

bool HasFont(const std::wstring& name) {
    const UniqueFont font(CreateFontW(0, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                      OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                      DEFAULT_PITCH, name.c_str()));
    const ScreenDC dc;
    const SelectedObject selected(dc.Get(), font.Get());
    wchar_t face[LF_FACESIZE] = L"";
    GetTextFaceW(dc.Get(), ARRAYSIZE(face), face);
    return CompareStringOrdinal(face, -1, name.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace tamarind
