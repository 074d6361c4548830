#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

class EditBoxListener {
public:
    // The text is another one than before.
    virtual void OnTextChanged() = 0;

protected:
    ~EditBoxListener() = default;
};

// A box of several lines of text with a vertical scroll bar. Its selection shows without the focus,
// too.
class EditBox final : public Control {
public:
    bool Create(HWND parent, int id, EditBoxListener& listener);

    // With CR LF as line break; scrolls to the first line.
    void SetText(const std::wstring& text);
    std::wstring Text() const;
    // The longest text that can be typed, in UTF-16 units; 0 makes the box read-only.
    void SetMaxLength(std::size_t units);
    // Selects a part of the text and brings it into view.
    void Select(std::size_t start, std::size_t length);
    void SetColors(COLORREF text, COLORREF background);
    // Room beside the text, in pixels; to be set again after the font.
    void SetMargins(int pixels);

private:
    std::optional<LRESULT> OnCommand(int id, int code) override;
    std::optional<LRESULT> OnColors(HDC dc) override;

    EditBoxListener* m_listener = nullptr;
    COLORREF m_text = 0;
    COLORREF m_background = 0;
    UniqueBrush m_brush;
};

}  // namespace tamarind
