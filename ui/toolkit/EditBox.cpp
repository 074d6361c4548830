#include "ui/toolkit/EditBox.h"

#include <algorithm>
#include <utility>

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

bool EditBox::Create(HWND parent, int id, EditBoxListener& listener) {
    m_listener = &listener;
    return CreateControl(
        WC_EDITW, parent, id,
        WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOHIDESEL);
}

void EditBox::SetText(const std::wstring& text) {
    m_marks.clear();
    SetWindowTextW(Handle(), text.c_str());
}

std::wstring EditBox::Text() const {
    return TextOfWindow(Handle());
}

void EditBox::SetMaxLength(std::size_t units) {
    Send(EM_SETLIMITTEXT, units);
    Send(EM_SETREADONLY, units == 0 ? TRUE : FALSE);
}

void EditBox::Select(std::size_t start, std::size_t length) {
    Send(EM_SETSEL, start, static_cast<LPARAM>(start + length));
    Send(EM_SCROLLCARET);
}

void EditBox::SetMarks(std::vector<MarkedPart> marks) {
    if (!m_marks.empty() || !marks.empty()) {
        m_marks = std::move(marks);
        InvalidateRect(Handle(), nullptr, TRUE);
    }
}

// The control draws whenever it likes, in these messages; the marks are drawn over what it has
// drawn.
std::optional<LRESULT> EditBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool draws =
        message == WM_PAINT || message == WM_KEYDOWN || message == WM_CHAR ||
        message == WM_VSCROLL || message == WM_MOUSEWHEEL || message == WM_LBUTTONDOWN ||
        message == WM_LBUTTONDBLCLK || message == WM_MOUSEMOVE || message == EM_SETSEL ||
        message == EM_SCROLLCARET || message == WM_SETFOCUS || message == WM_KILLFOCUS;
    if (m_marks.empty() || !draws) {
        return std::nullopt;
    }
    const LRESULT answer = CallOriginal(message, wParam, lParam);
    DrawMarks();
    return answer;
}

void EditBox::DrawMarks() const {
    const std::wstring text = Text();
    DWORD selectionBegin = 0;
    DWORD selectionEnd = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&selectionBegin),
         reinterpret_cast<LPARAM>(&selectionEnd));
    const HDC dc = GetDC(Handle());
    HideCaret(Handle());
    {
        const SelectedObject font(dc, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
        for (const MarkedPart& mark : m_marks) {
            const std::size_t end = std::min(mark.start + mark.length, text.size());
            // What is selected stays as it is.
            DrawMarkAt(dc, text, mark.start, std::min<std::size_t>(end, selectionBegin));
            DrawMarkAt(dc, text, std::max<std::size_t>(mark.start, selectionEnd), end);
        }
    }
    ShowCaret(Handle());
    ReleaseDC(Handle(), dc);
}

// A piece for each line of the box that the part reaches into, if it is visible.
void EditBox::DrawMarkAt(HDC dc, const std::wstring& text, std::size_t begin,
                         std::size_t end) const {
    RECT area{};
    Send(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    while (begin < end) {
        const auto lineOf = [this](std::size_t at) { return Send(EM_LINEFROMCHAR, at); };
        std::size_t next = begin + 1;
        while (next < end && lineOf(next) == lineOf(begin)) {
            ++next;
        }
        const auto place = static_cast<DWORD>(Send(EM_POSFROMCHAR, begin));
        const POINT at{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
        if (at.y < area.bottom && at.y >= area.top) {
            DrawMark(dc, at, std::wstring_view(text).substr(begin, next - begin), m_text, area);
        }
        begin = next;
    }
}

std::optional<LRESULT> EditBox::OnCommand(int, int code) {
    if (code == EN_CHANGE) {
        m_listener->OnTextChanged();
    }
    return 0;
}

void EditBox::SetColors(COLORREF text, COLORREF background) {
    m_text = text;
    m_background = background;
    m_brush.Reset(CreateSolidBrush(background));
    InvalidateRect(Handle(), nullptr, TRUE);
}

void EditBox::SetMargins(int pixels) {
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(pixels, pixels));
}

std::optional<LRESULT> EditBox::OnColors(HDC dc) {
    if (!m_brush) {
        return std::nullopt;
    }
    SetTextColor(dc, m_text);
    SetBkColor(dc, m_background);
    return reinterpret_cast<LRESULT>(m_brush.Get());
}

}  // namespace tamarind
