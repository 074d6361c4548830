#include "ui/toolkit/DialogTexts.h"

#include <algorithm>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// What a control needs beside its text, in pixels at 96 DPI.
constexpr int kMarkWidth = 20;  // the box or circle and the gap after it
constexpr int kButtonMargins = 16;
constexpr int kFrameMargins = 20;

// The number that is the text of the window; 0 if it is none.
std::uint16_t NumberIn(HWND window) {
    const long number = std::wcstol(TextOfWindow(window).c_str(), nullptr, 10);
    return number > 0 && number <= UINT16_MAX ? static_cast<std::uint16_t>(number) : 0;
}

int MarginsOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
            return kMarkWidth;
        case ControlKind::CommandButton:
            return kButtonMargins;
        case ControlKind::Frame:
            return kFrameMargins;
        default:
            return 0;
    }
}

// Measures the text of a control in the font of that control.
class MeasuredText {
public:
    MeasuredText(HWND control, ControlKind kind)
        : m_dc(control),
          m_font(m_dc.Get(), reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0))),
          m_text(TextOfWindow(control)) {
        const bool isPlain = kind == ControlKind::Label &&
                             (GetWindowLongPtrW(control, GWL_STYLE) & SS_NOPREFIX) != 0;
        m_flags = DT_CALCRECT | (isPlain ? DT_NOPREFIX : 0U);
    }

    SIZE OnOneLine() const { return Measure(0, DT_SINGLELINE); }
    SIZE Wrapped(int width) const { return Measure(width, DT_WORDBREAK); }

private:
    SIZE Measure(int width, UINT flags) const {
        RECT area{0, 0, width, 0};
        DrawTextW(m_dc.Get(), m_text.c_str(), static_cast<int>(m_text.size()), &area,
                  m_flags | flags);
        return {area.right, area.bottom};
    }

    ScreenDC m_dc;
    SelectedObject m_font;
    std::wstring m_text;
    UINT m_flags = 0;
};

// The width in pixels at which the text of a control is shown completely. A label that is high
// enough may break its text into several lines; then the width is only about as small as possible.
int WidthForText(HWND control, ControlKind kind, SIZE size, int dpi) {
    const MeasuredText text(control, kind);
    const SIZE line = text.OnOneLine();
    int width = static_cast<int>(line.cx) + ScaledPixels(MarginsOf(kind), dpi);
    if (kind == ControlKind::Label && size.cy >= 2 * line.cy) {
        const int longest = width;
        const auto fits = [&](const SIZE& lines) {
            return lines.cy <= size.cy && lines.cx <= width;
        };
        width = static_cast<int>(size.cx);
        while (width < longest && !fits(text.Wrapped(width))) {
            width += std::max(1, width / 16);
        }
    }
    return width;
}

}  // namespace

void DialogTexts::Read(HWND dialog) {
    m_dialog = dialog;
    m_dpi = WindowDpi(dialog);
    m_captionNumber = NumberIn(dialog);
    m_width = static_cast<int>(ClientSizeOf(dialog).cx);
    m_items.clear();
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        Item item;
        item.control = child;
        item.kind = KindOf(child);
        item.number = HasCaption(item.kind) ? NumberIn(child) : std::uint16_t{0};
        item.bounds = BoundsInParent(child);
        m_items.push_back(item);
    }
}

void DialogTexts::Set(const TextByNumber& text) const {
    if (m_captionNumber != 0) {
        SetWindowTextW(m_dialog, text(m_captionNumber).c_str());
    }
    for (const Item& item : m_items) {
        if (item.number != 0) {
            SetWindowTextW(item.control, text(item.number).c_str());
        }
    }
}

// The dialog may be on a monitor of another resolution by now.
RECT DialogTexts::Bounds(const Item& item) const {
    const int dpi = WindowDpi(m_dialog);
    const auto scaled = [&](LONG length) {
        return static_cast<LONG>(Scaled(static_cast<std::int32_t>(length), dpi, m_dpi));
    };
    return {scaled(item.bounds.left), scaled(item.bounds.top), scaled(item.bounds.right),
            scaled(item.bounds.bottom)};
}

int DialogTexts::Width() const {
    return Scaled(m_width, WindowDpi(m_dialog), m_dpi);
}

int DialogTexts::Stretch(int leastWidth) const {
    const int width = Width();
    int stretched = std::max(width, leastWidth);
    for (const Item& item : m_items) {
        const RECT at = Bounds(item);
        const SIZE size{at.right - at.left, at.bottom - at.top};
        if (item.number == 0 || size.cx <= 0 || item.kind == ControlKind::DrawnButton) {
            continue;
        }
        const int wanted = WidthForText(item.control, item.kind, size, WindowDpi(m_dialog));
        if (wanted > size.cx) {
            // One more pixel, because both edges are rounded.
            stretched = std::max(stretched, Scaled(width, wanted + 1, static_cast<int>(size.cx)));
        }
    }
    for (const Item& item : m_items) {
        const RECT at = Bounds(item);
        const int left = Scaled(static_cast<int>(at.left), stretched, width);
        const int right = Scaled(static_cast<int>(at.right), stretched, width);
        SetWindowBounds(item.control, {left, at.top, right, at.bottom});
    }
    return stretched;
}

}  // namespace tamarind
