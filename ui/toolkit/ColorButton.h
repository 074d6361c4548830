#pragma once

#include "ui/toolkit/Control.h"

namespace tamarind {

// A button that shows a colour instead of a text; the Enter key presses it, too. In the dialog's
// template it is an owner-drawn button, whose invisible text names it to screen readers.
class ColorButton final : public Control {
public:
    bool Attach(HWND dialog, int id) { return AttachControl(dialog, id); }

    void SetColor(COLORREF color);

private:
    std::optional<LRESULT> OnDrawItem(const DRAWITEMSTRUCT& item) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    COLORREF m_color = 0;
};

}  // namespace tamarind
