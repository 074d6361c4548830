#pragma once

#include "ui/toolkit/Control.h"

namespace tamarind {

// The system's small picture for a warning. It is hidden until it is shown.
class WarningSign final : public Control {
public:
    // False if Windows cannot create it.
    bool Create(HWND parent, int id);

    // How wide and high it is, in pixels.
    static int Size(int dpi);
    // Gives it the picture for this DPI.
    void SetDpi(int dpi);

private:
    UniqueIcon m_icon;
};

}  // namespace tamarind
