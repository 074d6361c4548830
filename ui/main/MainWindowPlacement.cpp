#include "ui/main/MainWindowPlacement.h"

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/StoredPlace.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kMaximizedMark = 1;
constexpr int kLeastWidth = 400;  // pixels at 96 DPI
constexpr int kLeastHeight = 330;

StoredPlace PlaceIn(const OwnSettings& settings) {
    return {Twips{settings.mainWindowLeft}, Twips{settings.mainWindowTop},
            Twips{settings.mainWindowWidth}, Twips{settings.mainWindowHeight}};
}

}  // namespace

SIZE LeastMainWindowSize(int dpi) {
    return {ScaledPixels(kLeastWidth, dpi), ScaledPixels(kLeastHeight, dpi)};
}

WindowPlace RestoreMainWindowPlacement(const OwnSettings& settings) {
    WindowPlace place;
    place.bounds = BoundsOfPlace(PlaceIn(settings), LeastMainWindowSize(SystemDpi()));
    place.isMaximized = settings.mainWindowMaximized == kMaximizedMark;
    return place;
}

void CaptureMainWindowPlacement(HWND window, OwnSettings& settings) {
    settings.mainWindowMaximized = IsZoomed(window) ? kMaximizedMark : 0;
    if (IsIconic(window)) {
        return;
    }
    const StoredPlace place =
        PlaceOfBounds(BoundsOf(window), PlaceIn(settings), LeastMainWindowSize(SystemDpi()));
    settings.mainWindowLeft = place.left.value;
    settings.mainWindowTop = place.top.value;
    settings.mainWindowWidth = place.width.value;
    settings.mainWindowHeight = place.height.value;
}

}  // namespace tamarind
