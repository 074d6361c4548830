#include "ui/toolkit/Palette.h"

#include <array>

#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/SystemLook.h"

namespace tamarind {
namespace {

constexpr int kColors = 31;  // COLOR_MENUBAR is the last of the documented ones
constexpr double kLeastContrast = 4.5;

enum class Kind { Light, Dark, HighContrast };

Kind g_kind = Kind::Light;

constexpr COLORREF kFace = RGB(43, 43, 43);
constexpr COLORREF kField = RGB(30, 30, 30);
constexpr COLORREF kText = RGB(232, 232, 232);
constexpr COLORREF kPale = RGB(160, 160, 160);
constexpr COLORREF kEdge = RGB(96, 96, 96);
constexpr COLORREF kButton = RGB(60, 60, 60);
constexpr COLORREF kSelection = RGB(0, 90, 158);
constexpr COLORREF kIdleSelection = RGB(77, 77, 77);
constexpr COLORREF kHot = RGB(112, 184, 255);

COLORREF DarkColor(int index) {
    switch (index) {
        case COLOR_WINDOW:
            return kField;
        case COLOR_BTNFACE:
        case COLOR_MENU:
        case COLOR_MENUBAR:
        case COLOR_INFOBK:
        case COLOR_SCROLLBAR:
        case COLOR_ACTIVECAPTION:
        case COLOR_INACTIVECAPTION:
            return kFace;
        case COLOR_3DLIGHT:
            return kButton;
        case COLOR_GRAYTEXT:
            return kPale;
        case COLOR_HIGHLIGHT:
        case COLOR_MENUHILIGHT:
            return kSelection;
        case COLOR_HIGHLIGHTTEXT:
            return RGB(255, 255, 255);
        case COLOR_BTNSHADOW:
        case COLOR_BTNHIGHLIGHT:
        case COLOR_3DDKSHADOW:
        case COLOR_WINDOWFRAME:
            return kEdge;
        case COLOR_HOTLIGHT:
            return kHot;
        default:
            return kText;
    }
}

}  // namespace

bool UseTheme(Theme theme) {
    const SystemLook& look = SystemLook::Present();
    const bool wantsDark =
        theme == Theme::Dark || (theme == Theme::AsWindows && look.PrefersDark());
    const Kind kind = look.HasHighContrast() ? Kind::HighContrast
                      : wantsDark            ? Kind::Dark
                                             : Kind::Light;
    const bool isOther = kind != g_kind;
    g_kind = kind;
    return isOther;
}

bool IsDark() {
    return g_kind == Kind::Dark;
}

bool IsHighContrast() {
    return g_kind == Kind::HighContrast;
}

COLORREF PaletteColor(int index) {
    return IsDark() ? DarkColor(index) : GetSysColor(index);
}

HBRUSH PaletteBrush(int index) {
    static std::array<UniqueBrush, kColors> brushes;
    if (!IsDark()) {
        return GetSysColorBrush(index);
    }
    UniqueBrush& brush = brushes[static_cast<std::size_t>(index)];
    if (!brush) {
        brush = UniqueBrush(CreateSolidBrush(DarkColor(index)));
    }
    return brush.Get();
}

COLORREF SelectionColor(bool hasFocus) {
    return hasFocus   ? PaletteColor(COLOR_HIGHLIGHT)
           : IsDark() ? kIdleSelection
                      : GetSysColor(COLOR_BTNFACE);
}

COLORREF SelectionTextColor(bool hasFocus) {
    return PaletteColor(hasFocus ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
}

COLORREF ReadableColor(COLORREF chosen, bool isFirst, COLORREF background, int index) {
    if (g_kind == Kind::Light) {
        return chosen;
    }
    const bool holds = IsDark() && !isFirst && ContrastOf(chosen, background) >= kLeastContrast;
    const COLORREF color = holds ? chosen : PaletteColor(index);
    return ContrastOf(color, background) >= kLeastContrast ? color : PaletteColor(COLOR_WINDOWTEXT);
}

}  // namespace tamarind
