#include "ui/toolkit/ColorSwatch.h"

#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

void DrawCross(HDC dc, const RECT& area) {
    const SelectedObject pen(dc, GetStockObject(DC_PEN));
    SetDCPenColor(dc, PaletteColor(COLOR_BTNTEXT));
    MoveToEx(dc, area.left, area.top, nullptr);
    LineTo(dc, area.right, area.bottom);
    MoveToEx(dc, area.right - 1, area.top, nullptr);
    LineTo(dc, area.left - 1, area.bottom);
}

bool ColorSwatch::Create(HWND parent, int id) {
    return CreateControl(WC_STATICW, parent, id, SS_NOPREFIX);
}

void ColorSwatch::SetColor(std::optional<COLORREF> color) {
    m_color = color;
    wchar_t text[8] = L"";
    if (color) {
        wsprintfW(text, L"#%02X%02X%02X", GetRValue(*color), GetGValue(*color), GetBValue(*color));
    }
    SetWindowTextW(Handle(), text);
    InvalidateRect(Handle(), nullptr, FALSE);
}

std::optional<LRESULT> ColorSwatch::OnMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_NCHITTEST:
            return HTTRANSPARENT;
        default:
            return std::nullopt;
    }
}

void ColorSwatch::Paint() const {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT area = ClientAreaOf(Handle());
    DrawEdge(dc, &area, EDGE_RAISED, BF_RECT | BF_ADJUST);
    if (m_color) {
        const UniqueBrush brush(CreateSolidBrush(*m_color));
        FillRect(dc, &area, brush.Get());
    } else {
        FillRect(dc, &area, PaletteBrush(COLOR_BTNFACE));
        DrawCross(dc, area);
    }
    EndPaint(Handle(), &paint);
}

}  // namespace tamarind
