#include "ui/main/MainLook.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Pictures.h"

namespace tamarind {
namespace {

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
    look.foreground = ColorOfSetting(settings.foregroundColor);
    look.background = ColorOfSetting(settings.backgroundColor);
    look.activeKey = ColorOfSetting(settings.activeKeyForeColor);
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
