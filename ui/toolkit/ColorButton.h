#pragma once

#include <functional>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A button that shows a color instead of a text; the Enter key presses it, too. In the dialog's
// template it is an owner-drawn button, whose invisible text names it to screen readers.
class ColorButton final : public Control {
public:
    bool Attach(HWND dialog, int id) { return AttachControl(dialog, id); }
    // Outside of dialogs; hidden until it is shown. `onClick` is called for each click, also by
    // keyboard. False if Windows cannot create it.
    bool Create(HWND parent, int id, std::function<void()> onClick);

    // Nothing stands for no color of its own, and is crossed out.
    void SetColor(std::optional<COLORREF> color);

private:
    std::optional<LRESULT> OnDrawItem(const DRAWITEMSTRUCT& item) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::optional<LRESULT> OnCommand(int id, int code) override;

    std::optional<COLORREF> m_color = RGB(0, 0, 0);
    std::function<void()> m_onClick;
};

}  // namespace tamarind
