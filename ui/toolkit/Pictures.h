#pragma once

#include <initializer_list>

#include "ui/toolkit/Handles.h"

namespace tamarind {

// The number of the program's icon in its resources.
constexpr int kProgramIcon = 1;

// The icon of the program for ICON_SMALL or ICON_BIG. It is shared and must not be destroyed.
HICON ProgramIcon(WPARAM size);

// How a picture is drawn.
enum class PictureLook {
    Normal,
    Disabled,  // gray and half transparent
    Ghosted,   // half transparent
};

// Makes an image list of square pictures from a resource, in the largest size there is that does
// not exceed 16 pixels at 96 DPI, scaled to `dpi`. `list` is the name of the resource without its
// size, such as L"TOOLBAR" for TOOLBAR_16 to TOOLBAR_48. The list has all pictures in the first
// look, then all in the second, and so on. Null if there is no such resource.
UniqueImageList LoadPictures(const wchar_t* list, int dpi,
                             std::initializer_list<PictureLook> looks);

}  // namespace tamarind
