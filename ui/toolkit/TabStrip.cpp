#include "ui/toolkit/TabStrip.h"

#include <algorithm>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kTabPaddingX = 6;  // pixels at 96 DPI, at both sides of a tab's text
constexpr int kTabPaddingY = 3;

}  // namespace

TabStrip::TabStrip() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_TAB_CLASSES;
    InitCommonControlsEx(&controls);
}

bool TabStrip::Attach(HWND dialog, int id, TabStripListener& listener) {
    m_listener = &listener;
    if (!AttachControl(dialog, id)) {
        return false;
    }
    // On some systems the control's own padding does not grow with the DPI.
    const int dpi = WindowDpi(Handle());
    Send(TCM_SETPADDING, 0,
         MAKELPARAM(ScaledPixels(kTabPaddingX, dpi), ScaledPixels(kTabPaddingY, dpi)));
    return true;
}

void TabStrip::AddTab(const std::wstring& caption) {
    std::wstring text = caption;
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    Send(TCM_INSERTITEMW, static_cast<WPARAM>(Count()), reinterpret_cast<LPARAM>(&item));
}

void TabStrip::Select(int tab) {
    Send(TCM_SETCURSEL, static_cast<WPARAM>(tab));
    m_listener->OnTabSelected(tab);
}

void TabStrip::SelectNext(bool isForward) {
    const int count = Count();
    Select((Selected() + (isForward ? 1 : count - 1)) % count);
}

RECT TabStrip::PageBounds() const {
    RECT page = ClientAreaOf(Handle());
    Send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    MapWindowPoints(Handle(), GetParent(Handle()), reinterpret_cast<POINT*>(&page), 2);
    return page;
}

int TabStrip::MissingWidth() const {
    RECT last{};
    Send(TCM_GETITEMRECT, static_cast<WPARAM>(Count() - 1), reinterpret_cast<LPARAM>(&last));
    return std::max(0, static_cast<int>(last.right - ClientSizeOf(Handle()).cx));
}

std::optional<LRESULT> TabStrip::OnNotify(NMHDR& header) {
    if (header.code == TCN_SELCHANGE) {
        m_listener->OnTabSelected(Selected());
        return 0;
    }
    return std::nullopt;
}

}  // namespace tamarind
