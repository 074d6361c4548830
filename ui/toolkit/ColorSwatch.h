#pragma once

#include <optional>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A small raised field in a colour. It only shows: clicks go to what lies behind it. Its text is
// the colour's number, for those who cannot see it.
class ColorSwatch final : public Control {
public:
    bool Create(HWND parent, int id);

    // Nothing: the system's own colour, shown as a button's face that is crossed through.
    void SetColor(std::optional<COLORREF> color);

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint() const;

    std::optional<COLORREF> m_color;
};

}  // namespace tamarind
