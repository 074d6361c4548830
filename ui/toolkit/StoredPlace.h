#pragma once

#include <windows.h>

#include "ui/toolkit/Lengths.h"

namespace tamarind {

// A window's place on the desktop as settings hold it. The twips are the system's, whichever
// monitor the window is on.
struct StoredPlace {
    Twips left;
    Twips top;
    Twips width;
    Twips height;
};

// Where such a place puts a window, in pixels of the screen: on the nearest monitor, and no smaller
// than `least` or larger than that monitor, whatever numbers a damaged file holds.
RECT BoundsOfPlace(const StoredPlace& place, const SIZE& least);

// The place of a window at `bounds`. What puts the window there already stays as it is: a window
// that nobody moved is stored as it was.
StoredPlace PlaceOfBounds(const RECT& bounds, const StoredPlace& stored, const SIZE& least);

}  // namespace tamarind
