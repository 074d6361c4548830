#include "ui/main/MainLook.h"

#include <string_view>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/Pictures.h"
#include "ui/toolkit/SystemLook.h"

namespace tamarind {
namespace {

// What the settings have at the first start: nobody has chosen these.
constexpr std::int32_t kFirstForeground = -2147483640;  // the color of texts in windows
constexpr std::int32_t kFirstActiveKey = 0xFF0000;
constexpr std::string_view kFirstFont = "MS Sans Serif";
constexpr std::int32_t kFirstFontSize = 10;

BorderLook BorderOf(const OwnSettings& settings) {
    if (settings.fixedBorders == 0) {
        return BorderLook::None;
    }
    return settings.flatUserInterface != 0 ? BorderLook::Single : BorderLook::Sunken;
}

}  // namespace

MainLook MakeMainLook(const OwnSettings& settings, int dpi) {
    MainLook look;
    look.dpi = dpi;
    look.font.name = Widen(settings.fontName);
    look.font.charset = settings.fontScript;
    look.font.points = UsableFontSize(settings.fontSize);
    look.font.style = settings.fontStyle;
    const bool isFirstFont = settings.fontName == kFirstFont && settings.fontSize == kFirstFontSize;
    if (isFirstFont) {
        look.font.points = Scaled(look.font.points, SystemLook::Present().TextScale(), 100);
    }
    const bool isOwnBackground = !IsDark() && !IsHighContrast();
    look.background =
        isOwnBackground ? ColorOfSetting(settings.backgroundColor) : PaletteColor(COLOR_WINDOW);
    const auto readable = [&](std::int32_t setting, std::int32_t first, int index) {
        return ReadableColor(ColorOfSetting(setting), setting == first, look.background, index);
    };
    look.foreground = readable(settings.foregroundColor, kFirstForeground, COLOR_WINDOWTEXT);
    look.activeKey = readable(settings.activeKeyForeColor, kFirstActiveKey, COLOR_HOTLIGHT);
    look.border = BorderOf(settings);
    look.showsGridLines = settings.commandListShowLines != 0;
    look.toolbarPictures = LoadPictures(L"TOOLBAR", dpi, {PictureLook::Normal});
    look.disabledToolbarPictures = LoadPictures(L"TOOLBAR", dpi, {PictureLook::Disabled});
    look.treePictures = LoadPictures(L"TREE", dpi, {PictureLook::Normal});
    look.keyPictures = LoadPictures(L"KEYS", dpi, {PictureLook::Normal, PictureLook::Ghosted});
    look.statusPictures = LoadPictures(L"STATUS", dpi, {PictureLook::Normal});
    return look;
}

}  // namespace tamarind
