#pragma once

#include <initializer_list>

#include "ui/toolkit/Handles.h"

namespace tamarind {

// The number of the program's icon among its resources.
constexpr int kProgramIcon = 1;

// The program's icon in a size that windows have: ICON_SMALL, ICON_BIG. It stays the system's.
HICON ProgramIcon(WPARAM size);

enum class PictureLook {
    Normal,
    Disabled,  // gray and half transparent
    Ghosted,   // half transparent
};

// Makes an image list of square pictures from the program's resources, in the largest size that is
// not larger than 16 pixels at 96 DPI are at `dpi`. `list` is the resource's name without its size,
// such as L"TOOLBAR". The list holds all the pictures in the first look, then all in the next.
// Null when there is no such resource.
UniqueImageList LoadPictures(const wchar_t* list, int dpi,
                             std::initializer_list<PictureLook> looks);

}  // namespace tamarind
