#pragma once

#include <optional>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Draws the cross of a field that has no color.
void DrawCross(HDC dc, const RECT& area);

// A small raised field that shows a color. Clicks go to the window behind it. Its text is the
// number of the color ("#RRGGBB"), for users who cannot see it.
class ColorSwatch final : public Control {
public:
    bool Create(HWND parent, int id);

    // Without a color it stands for the system's own: the face of a button, crossed out.
    void SetColor(std::optional<COLORREF> color);

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint() const;

    std::optional<COLORREF> m_color;
};

}  // namespace tamarind
