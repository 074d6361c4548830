#pragma once

#include "ui/toolkit/Fonts.h"

namespace tamarind {

// How the user wants a list to look, in whatever window it is.
struct ListLook {
    COLORREF foreground = 0;
    COLORREF background = 0;
    BorderLook border = BorderLook::Sunken;
    UserFont font;
};

}  // namespace tamarind
