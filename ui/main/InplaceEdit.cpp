#include "ui/main/InplaceEdit.h"

#include <algorithm>

#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/ScopeExit.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr UINT kScrollCheckMs = 50;
constexpr int kIconWidth = 19;  // pixels at 96 DPI, left of the row's text
constexpr Twips kRowMargin{30};
constexpr Twips kEditMargin{300};
constexpr Twips kListMargin{690};
constexpr Twips kLeastCap{270};
constexpr WPARAM kControlA = 1;

}  // namespace

bool InplaceEdit::Create(HWND parent, int id, InplaceEditListener& listener) {
    m_listener = &listener;
    if (!CreateControl(WC_EDITW, parent, id, WS_BORDER | ES_LEFT | ES_AUTOHSCROLL)) {
        return false;
    }
    Send(EM_SETLIMITTEXT, 0);  // 0: the largest limit that Windows has
    return true;
}

void InplaceEdit::SetDpi(int dpi) {
    m_dpi = dpi;
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    if (IsOpen()) {
        m_textWidth = TextWidth(Handle(), TextOfWindow(Handle()));
        SetBounds(Place());
    }
}

void InplaceEdit::Open(int row, const std::wstring& text, std::size_t selectionStart) {
    m_row = row;
    m_textWidth = TextWidth(Handle(), text);
    SetWindowTextW(Handle(), text.c_str());
    const RECT at = Place();
    SetWindowPos(Handle(), HWND_TOP, at.left, at.top, at.right - at.left, at.bottom - at.top,
                 SWP_SHOWWINDOW);
    SetFocus(Handle());
    Send(EM_SETSEL, selectionStart, static_cast<LPARAM>(text.size()));
    Timer2.Start(Handle(), kScrollCheckMs);
}

void InplaceEdit::Close() {
    if (!IsOpen()) {
        return;
    }
    m_row = VirtualList::kNoRow;
    Timer2.Stop();
    if (GetFocus() == Handle()) {
        SetFocus(m_list.Handle());
    }
    Show(false);
}

void InplaceEdit::FollowList() {
    if (IsOpen()) {
        m_list.EnsureVisible(m_row);
        SetBounds(Place());
    }
}

// Uses the same distances as the rows and the column of the list, so that the text stays in place
// when the box opens over it.
RECT InplaceEdit::Place() const {
    const auto pixels = [this](Twips length) { return ToPixels(length, m_dpi).value; };
    const RECT list = BoundsInParent(m_list.Handle());
    const RECT row = m_list.RowBounds(m_row);
    const int listWidth = static_cast<int>(SizeOf(list).cx);
    const int cap = std::max(listWidth - pixels(kListMargin), pixels(kLeastCap));
    RECT at{};
    at.left = list.left + row.left + ScaledPixels(kIconWidth, m_dpi);
    at.top = list.top + row.top + pixels(kRowMargin);
    at.right = at.left + std::min(m_textWidth + pixels(kEditMargin), cap);
    at.bottom = at.top + (row.bottom - row.top) - pixels(kRowMargin);
    return at;
}

std::optional<LRESULT> InplaceEdit::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CHAR:
            return OnCharacter(wParam, lParam) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_KILLFOCUS:
            // A message box about the text takes the focus only for a while.
            if (!m_isEntering) {
                Close();
            }
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

// The edit control would beep at the characters of these keys.
bool InplaceEdit::OnCharacter(WPARAM unit, LPARAM flags) {
    switch (unit) {
        case VK_RETURN:
            // The key press that opened the box and is still held down enters nothing.
            if ((HIWORD(flags) & KF_REPEAT) == 0) {
                Enter();
            }
            return true;
        case VK_ESCAPE:
            Close();
            return true;
        case kControlA:
            Send(EM_SETSEL, 0, -1);
            return true;
        default:
            return unit == L'\n' || unit == L'\t';
    }
}

void InplaceEdit::Enter() {
    if (!IsOpen() || m_isEntering) {
        return;
    }
    bool isTaken = false;
    {
        m_isEntering = true;
        const ScopeExit entered([this] { m_isEntering = false; });
        isTaken = m_listener->OnTextEntered(TextOfWindow(Handle()));
    }
    if (isTaken) {
        Close();
    } else if (IsOpen()) {
        SetFocus(Handle());
    }
}

// The row is looked at again and again: that catches every way in which a list can scroll.
void InplaceEdit::OnTick() {
    if (BoundsInParent(Handle()).top != Place().top) {
        Close();
    }
}

}  // namespace tamarind
