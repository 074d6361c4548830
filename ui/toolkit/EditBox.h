#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A box of several lines of text with a vertical scroll bar.
class EditBox final : public Control {
public:
    bool Create(HWND parent, int id);

    // With CR LF as line break; scrolls to the first line.
    void SetText(const std::wstring& text);
    void SetReadOnly(bool isReadOnly);
    void SetColors(COLORREF text, COLORREF background);
    // Room beside the text, in pixels; to be set again after the font.
    void SetMargins(int pixels);

private:
    std::optional<LRESULT> OnColors(HDC dc) override;

    COLORREF m_text = 0;
    COLORREF m_background = 0;
    UniqueBrush m_brush;
};

}  // namespace tamarind
