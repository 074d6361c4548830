#include "ui/main/MainWindowPlacement.h"

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Forms.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kMaximizedMark = 1;

}  // namespace

// The twips of a place on the desktop are the system's, whichever monitor that is on.
WindowPlace RestoreMainWindowPlacement(const Settings& settings) {
    const auto pixels = [](std::int32_t twips) {
        return static_cast<LONG>(ToPixels(Twips{twips}, SystemDpi()).value);
    };
    const LONG left = pixels(settings.mainWindowLeft);
    const LONG top = pixels(settings.mainWindowTop);
    WindowPlace place;
    place.bounds = MovedOntoMonitor({left, top, left + pixels(settings.mainWindowWidth),
                                     top + pixels(settings.mainWindowHeight)});
    place.isMaximized = settings.mainWindowMaximized == kMaximizedMark;
    return place;
}

void CaptureMainWindowPlacement(HWND window, Settings& settings) {
    settings.mainWindowMaximized = IsZoomed(window) ? kMaximizedMark : 0;
    if (IsIconic(window)) {
        return;
    }
    RECT bounds{};
    GetWindowRect(window, &bounds);
    const auto store = [](std::int32_t& twips, LONG pixels) {
        twips = ToTwips(Pixels{pixels}, SystemDpi(), Twips{twips}).value;
    };
    store(settings.mainWindowLeft, bounds.left);
    store(settings.mainWindowTop, bounds.top);
    store(settings.mainWindowWidth, bounds.right - bounds.left);
    store(settings.mainWindowHeight, bounds.bottom - bounds.top);
}

}  // namespace tamarind
