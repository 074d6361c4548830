#pragma once

#include <string>
#include <vector>

#include "ui/toolkit/Control.h"
#include "ui/toolkit/MarkedText.h"

namespace tamarind {

// Hears of changes of a text.
class EditBoxListener {
public:
    // The text is another one than before. Windows does not report a text that the program has set
    // in a box of several lines (Microsoft: EN_CHANGE), but listeners should not rely on that.
    virtual void OnTextChanged() = 0;

protected:
    ~EditBoxListener() = default;
};

// A box for several lines of text with a vertical scroll bar. Its selection is visible without the
// focus, too.
class EditBox final : public Control {
public:
    // `listener` must outlive the control. False if Windows cannot create it.
    bool Create(HWND parent, int id, EditBoxListener& listener);

    // The text has CR LF as line break. Scrolls to the first line.
    void SetText(const std::wstring& text);
    std::wstring Text() const;
    // The length up to which text can be typed, in UTF-16 units. 0 makes the box read-only.
    void SetMaxLength(std::size_t units);
    // Selects a part of the text, in UTF-16 units, and scrolls it into view.
    void Select(std::size_t start, std::size_t length);
    // Marks parts of the text, until another text or other marks are set.
    void SetMarks(std::vector<MarkedPart> marks);
    // Before the first call the box has the colors of the system.
    void SetColors(COLORREF text, COLORREF background);
    // The distance of the text from the left and right edges, in pixels. A new font resets it.
    void SetMargins(int pixels);

private:
    std::optional<LRESULT> OnCommand(int id, int code) override;
    std::optional<LRESULT> OnColors(HDC dc) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DrawMarks() const;
    void DrawMarkAt(HDC dc, const std::wstring& text, std::size_t begin, std::size_t end) const;

    EditBoxListener* m_listener = nullptr;
    std::vector<MarkedPart> m_marks;
    COLORREF m_text = 0;
    COLORREF m_background = 0;
    UniqueBrush m_brush;
};

}  // namespace tamarind
