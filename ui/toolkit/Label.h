#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A line of text outside of dialogs, cut with dots where it is too long for its place. It is hidden
// until it is shown.
class Label final : public Control {
public:
    // False if Windows cannot create it.
    bool Create(HWND parent, int id);

    // Does nothing if it shows the text already.
    void SetText(const std::wstring& text);
    const std::wstring& Text() const { return m_text; }
    // Before the first call it has the colors of a dialog.
    void SetColors(COLORREF text, COLORREF background);

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnColors(HDC dc) override;

    std::wstring m_text;
    COLORREF m_color = 0;
    COLORREF m_background = 0;
    UniqueBrush m_brush;
};

}  // namespace tamarind
