#include "ui/toolkit/Fonts.h"

#include <algorithm>
#include <string_view>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kPointsPerInch = 72;

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

void ApplyUserFont(Control& control, const UserFont& font, bool withUserSize, int points, int dpi) {
    const int style = withUserSize ? font.style : 0;
    LOGFONTW wanted{};
    wanted.lfHeight = -Scaled(withUserSize ? font.points : points, dpi, kPointsPerInch);
    wanted.lfWeight = (style & 1) != 0 ? FW_BOLD : FW_NORMAL;
    wanted.lfItalic = (style & 2) != 0;
    wanted.lfStrikeOut = (style & 4) != 0;
    wanted.lfUnderline = (style & 8) != 0;
    wanted.lfCharSet = static_cast<BYTE>(font.charset);
    const std::wstring_view face = DrawnFace(font.name).substr(0, LF_FACESIZE - 1);
    std::copy(face.begin(), face.end(), wanted.lfFaceName);
    if (UniqueFont made{CreateFontIndirectW(&wanted)}) {
        control.SetFont(std::move(made));
    }
}

UniqueFont MakeMessageFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
        return {};
    }
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = Scaled(font.lfHeight, dpi, SystemDpi());
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
