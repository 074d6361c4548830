#pragma once

#include "model/program/Settings.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// What the settings and the window's resolution make of its look.
struct MainLook {
    int dpi = 0;
    UserFont font;
    COLORREF foreground = 0;
    COLORREF background = 0;
    COLORREF activeKey = 0;
    BorderLook border = BorderLook::Sunken;
    bool showsGridLines = false;
    UniqueImageList toolbarPictures;
    UniqueImageList disabledToolbarPictures;
    UniqueImageList treePictures;
    UniqueImageList keyPictures;
    UniqueImageList statusPictures;
};

MainLook MakeMainLook(const Settings& settings, int dpi);

}  // namespace tamarind
