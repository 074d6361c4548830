#include "ui/toolkit/ResizableDialog.h"

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

LONG FromDpiToDpi(LONG length, int from, int to) {
    return Scaled(static_cast<std::int32_t>(length), to, from);
}

}  // namespace

std::optional<LRESULT> ResizableDialog::HandleMessage(UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO:
            SetLeastSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        default:
            return std::nullopt;
    }
}

// Whatever size the dialog has, its controls are at this moment where they belong at the smallest
// size.
void ResizableDialog::OnStretched(int clientWidth) {
    const int dpi = WindowDpi(Handle());
    const LONG height =
        m_dpi == 0 ? ClientSizeOf(Handle()).cy : FromDpiToDpi(m_leastArea.cy, m_dpi, dpi);
    m_dpi = dpi;
    m_leastArea = {clientWidth, height};
    m_places.clear();
    for (const Anchor& anchor : m_anchors) {
        m_places.push_back(BoundsInParent(GetDlgItem(Handle(), anchor.id)));
    }
    Dialog::OnStretched(clientWidth);
    Layout();
}

void ResizableDialog::Layout() const {
    if (m_places.empty()) {
        return;
    }
    const int dpi = WindowDpi(Handle());
    const auto scaled = [&](LONG length) { return FromDpiToDpi(length, m_dpi, dpi); };
    const SIZE area = ClientSizeOf(Handle());
    const LONG wider = area.cx - scaled(m_leastArea.cx);
    const LONG higher = area.cy - scaled(m_leastArea.cy);
    for (std::size_t at = 0; at < m_places.size(); ++at) {
        const Anchor& anchor = m_anchors[at];
        const RECT& place = m_places[at];
        const auto left = static_cast<int>(scaled(place.left) + wider * anchor.left / 100);
        const auto top = static_cast<int>(scaled(place.top) + higher * anchor.top / 100);
        const auto right = static_cast<int>(scaled(place.right) + wider * anchor.right / 100);
        const auto bottom = static_cast<int>(scaled(place.bottom) + higher * anchor.bottom / 100);
        // What a label shows depends on its width, so nothing may be copied from its former place.
        SetWindowPos(GetDlgItem(Handle(), anchor.id), nullptr, left, top, right - left,
                     bottom - top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    // Not every system repaints all of a mirrored dialog that has changed its size.
    InvalidateRect(Handle(), nullptr, TRUE);
}

void ResizableDialog::SetLeastSize(MINMAXINFO& info) const {
    if (m_dpi == 0) {
        return;
    }
    const int dpi = WindowDpi(Handle());
    const SIZE area = ClientSizeOf(Handle());
    RECT bounds{};
    GetWindowRect(Handle(), &bounds);
    info.ptMinTrackSize = {
        FromDpiToDpi(m_leastArea.cx, m_dpi, dpi) + bounds.right - bounds.left - area.cx,
        FromDpiToDpi(m_leastArea.cy, m_dpi, dpi) + bounds.bottom - bounds.top - area.cy};
}

}  // namespace tamarind
