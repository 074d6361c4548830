#pragma once

#include <windows.h>

#include "ui/toolkit/Lengths.h"

namespace tamarind {

// The place of a window on the desktop as settings have it, in twips by the DPI of the system,
// whichever monitor the window is on.
struct StoredPlace {
    Twips left;
    Twips top;
    Twips width;
    Twips height;
};

// Where this place puts a window, in screen pixels: on the nearest monitor, at least as large as
// `least` and at most as large as that monitor, whatever numbers a damaged file contains.
RECT BoundsOfPlace(const StoredPlace& place, const SIZE& least);

// The place of a window with these bounds in screen pixels. If `stored` puts the window there
// already it is returned unchanged, so that a window that was not moved is stored as it was.
StoredPlace PlaceOfBounds(const RECT& bounds, const StoredPlace& stored, const SIZE& least);

}  // namespace tamarind
