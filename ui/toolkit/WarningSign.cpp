#include "ui/toolkit/WarningSign.h"

#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kSize = 16;  // pixels at 96 DPI

}  // namespace

bool WarningSign::Create(HWND parent, int id) {
    return CreateControl(WC_STATICW, parent, id, SS_ICON | SS_REALSIZECONTROL);
}

int WarningSign::Size(int dpi) {
    return ScaledPixels(kSize, dpi);
}

void WarningSign::SetDpi(int dpi) {
    UniqueIcon icon(
        static_cast<HICON>(LoadImageW(nullptr, IDI_WARNING, IMAGE_ICON, Size(dpi), Size(dpi), 0)));
    Send(STM_SETICON, reinterpret_cast<WPARAM>(icon.Get()));
    m_icon = std::move(icon);
}

}  // namespace tamarind
