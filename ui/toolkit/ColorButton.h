#pragma once

#include "ui/toolkit/Control.h"

namespace tamarind {

// A field in a colour that is pressed like a button, by the Enter key too. In the dialog's template
// it is an owner-drawn button; its text, which does not show, names it to screen readers.
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
