#include "ui/toolkit/SpinButton.h"

#include <utility>

namespace tamarind {
namespace {

constexpr int kFarthest = 1'000'000;

}  // namespace

// Only the steps are of interest, so the control always stands in the middle of its own range.
bool SpinButton::Create(HWND parent, int id, std::function<void(int steps)> onStep) {
    m_onStep = std::move(onStep);
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_UPDOWN_CLASS;
    InitCommonControlsEx(&controls);
    if (!CreateControl(UPDOWN_CLASSW, parent, id, 0)) {
        return false;
    }
    Send(UDM_SETRANGE32, static_cast<WPARAM>(-kFarthest), kFarthest);
    return true;
}

// TRUE keeps the control where it is (Microsoft: UDN_DELTAPOS).
std::optional<LRESULT> SpinButton::OnNotify(NMHDR& header) {
    if (header.code != UDN_DELTAPOS) {
        return std::nullopt;
    }
    m_onStep(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    return TRUE;
}

}  // namespace tamarind
