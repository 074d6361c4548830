#pragma once

#include "ui/toolkit/Fonts.h"

namespace tamarind {

// How the user wants lists to look, in all windows.
struct ListLook {
    COLORREF foreground = 0;
    COLORREF background = 0;
    BorderLook border = BorderLook::Sunken;
    UserFont font;
};

}  // namespace tamarind
