#pragma once

#include "model/program/OwnSettings.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// Everything about the look of the main window that follows from the settings and its DPI. Lists of
// pictures are owned here and lent to the controls.
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

// `dpi` is that of the window. Pictures that cannot be loaded are left out.
MainLook MakeMainLook(const OwnSettings& settings, int dpi);

}  // namespace tamarind
