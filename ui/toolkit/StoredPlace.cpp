#include "ui/toolkit/StoredPlace.h"

#include <algorithm>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

LONG PixelsOf(Twips length) {
    return ToPixels(length, SystemDpi()).value;
}

Twips TwipsOf(LONG pixels, Twips stored) {
    return ToTwips(Pixels{static_cast<std::int32_t>(pixels)}, SystemDpi(), stored);
}

}  // namespace

RECT BoundsOfPlace(const StoredPlace& place, const SIZE& least) {
    const LONG left = PixelsOf(place.left);
    const LONG top = PixelsOf(place.top);
    const LONG width = std::max(PixelsOf(place.width), least.cx);
    const LONG height = std::max(PixelsOf(place.height), least.cy);
    return MovedOntoMonitor({left, top, left + width, top + height});
}

StoredPlace PlaceOfBounds(const RECT& bounds, const StoredPlace& stored, const SIZE& least) {
    const RECT former = BoundsOfPlace(stored, least);
    if (EqualRect(&former, &bounds)) {
        return stored;
    }
    return {TwipsOf(bounds.left, stored.left), TwipsOf(bounds.top, stored.top),
            TwipsOf(bounds.right - bounds.left, stored.width),
            TwipsOf(bounds.bottom - bounds.top, stored.height)};
}

}  // namespace tamarind
