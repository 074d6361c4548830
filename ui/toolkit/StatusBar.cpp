#include "ui/toolkit/StatusBar.h"

namespace tamarind {

bool StatusBar::Create(HWND parent, int id, StatusBarListener& listener) {
    m_listener = &listener;
    return CreateControl(STATUSCLASSNAMEW, parent, id,
                         WS_VISIBLE | SBARS_SIZEGRIP | CCS_NOPARENTALIGN | CCS_NORESIZE);
}

void StatusBar::SetParts(std::span<const int> rightEdges) {
    Send(SB_SETPARTS, rightEdges.size(), reinterpret_cast<LPARAM>(rightEdges.data()));
}

void StatusBar::SetText(int part, const std::wstring& text) {
    Send(SB_SETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text.c_str()));
}

RECT StatusBar::BoundsOfPart(int part) const {
    RECT bounds{};
    Send(SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&bounds));
    return bounds;
}

void StatusBar::SetIcon(int part, UniqueIcon icon) {
    Send(SB_SETICON, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(icon.Get()));
    m_icon = std::move(icon);
}

int StatusBar::IdealHeight() const {
    const ScreenDC dc(Handle());
    const SelectedObject font(dc.Get(), reinterpret_cast<HFONT>(Send(WM_GETFONT)));
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.Get(), &metrics);
    int borders[3] = {};  // horizontal, vertical, between parts
    Send(SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(&borders[0]));
    const int lines = 4;  // two pixels of edge above the text and below it
    return static_cast<int>(metrics.tmHeight) + 2 * borders[1] + lines;
}

std::optional<LRESULT> StatusBar::OnNotify(NMHDR& header) {
    if (header.code != NM_CLICK) {
        return std::nullopt;
    }
    m_listener->OnStatusPartClicked(
        static_cast<int>(reinterpret_cast<const NMMOUSE&>(header).dwItemSpec));
    return TRUE;
}

}  // namespace tamarind
