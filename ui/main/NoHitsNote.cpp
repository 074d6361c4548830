#include "ui/main/NoHitsNote.h"

#include <algorithm>
#include <utility>

#include "ui/main/ControlIds.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kMargin = 6;  // pixels at 96 DPI

}  // namespace

void NoHitsNote::ApplyLook(const MainLook& look) {
    m_color = look.foreground;
    m_background = look.background;
    UniqueFont font = MakeUserFont(look.font, look.dpi);
    std::swap(font, m_font);  // the former one is destroyed when no control uses it any more
    m_lineHeight = LineHeightOf(m_font.Get());
    SetUp();
}

void NoHitsNote::SetUp() {
    if (lblNoHits.Handle() != nullptr) {
        lblNoHits.SetColors(m_color, m_background);
        lblNoHits.UseFont(m_font.Get());
        cmdOtherHits.UseFont(m_font.Get());
    }
}

void NoHitsNote::Show(HWND parent, const std::wstring& text, const std::wstring& elsewhere) {
    const bool isMade = lblNoHits.Handle() != nullptr;
    if (!isMade && (text.empty() || !lblNoHits.Create(parent, kIdLblNoHits) ||
                    !cmdOtherHits.Create(parent, kIdCmdOtherHits, m_onElsewhere))) {
        return;
    }
    if (!isMade) {
        SetUp();
    }
    lblNoHits.SetText(text);
    lblNoHits.Show(!text.empty());
    cmdOtherHits.SetText(elsewhere);
    cmdOtherHits.Show(!elsewhere.empty());
}

void NoHitsNote::SetBounds(const RECT& rows, int dpi) {
    if (lblNoHits.Handle() == nullptr) {
        return;
    }
    const int margin = ScaledPixels(kMargin, dpi);
    RECT line = rows;
    InflateRect(&line, -margin, -margin);
    line.bottom = line.top + m_lineHeight;
    SetWindowPos(lblNoHits.Handle(), HWND_TOP, line.left, line.top,
                 std::max<LONG>(SizeOf(line).cx, 0), SizeOf(line).cy, SWP_NOACTIVATE);
    const LONG width = TextWidth(cmdOtherHits.Handle(), cmdOtherHits.Text()) + 4 * margin;
    SetWindowPos(cmdOtherHits.Handle(), HWND_TOP, line.left, line.bottom + margin,
                 std::min(width, SizeOf(line).cx), m_lineHeight + 2 * margin, SWP_NOACTIVATE);
}

}  // namespace tamarind
