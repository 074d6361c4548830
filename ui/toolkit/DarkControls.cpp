#include "ui/toolkit/DarkControls.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "ui/toolkit/ControlKind.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kTextGap = 4;  // pixels at 96 DPI
constexpr int kBoxSize = 13;

class Painter {
public:
    Painter(HWND control, HDC dc)
        : m_control(control),
          m_dc(dc),
          m_dpi(WindowDpi(control)),
          m_font(dc, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0))) {
        SetBkMode(dc, TRANSPARENT);
    }

    int Scaled(int pixels) const { return ScaledPixels(pixels, m_dpi); }
    bool IsEnabled() const { return IsWindowEnabled(m_control) != FALSE; }
    int TextIndex() const { return IsEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT; }

    void Fill(const RECT& area, int color) const { FillRect(m_dc, &area, PaletteBrush(color)); }
    void Frame(const RECT& area, int color) const { FrameRect(m_dc, &area, PaletteBrush(color)); }
    void Text(const std::wstring& text, RECT area, UINT format, int color) const {
        SetTextColor(m_dc, PaletteColor(color));
        DrawTextW(m_dc, text.c_str(), -1, &area, format);
    }
    // A caption with its access key, which Windows shows only to users of the keyboard.
    UINT KeyFormat() const {
        const auto state = SendMessageW(m_control, WM_QUERYUISTATE, 0, 0);
        return (state & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0U;
    }
    void Focus(RECT area) const {
        const auto state = SendMessageW(m_control, WM_QUERYUISTATE, 0, 0);
        if (GetFocus() == m_control && (state & UISF_HIDEFOCUS) == 0) {
            SetTextColor(m_dc, PaletteColor(COLOR_BTNTEXT));
            SetBkColor(m_dc, PaletteColor(COLOR_BTNFACE));
            DrawFocusRect(m_dc, &area);
        }
    }
    // A triangle that points down, or up.
    void Arrow(const RECT& area, bool isUp, int color) const {
        const int size = Scaled(3);
        const int x = static_cast<int>(area.left + area.right) / 2;
        const int y = static_cast<int>(area.top + area.bottom) / 2;
        const int tip = isUp ? -size / 2 - 1 : size / 2 + 1;
        const std::array<POINT, 3> points = {
            {{x - size, y - tip / 2}, {x + size, y - tip / 2}, {x, y - tip / 2 + 2 * tip}}};
        const SelectedObject brush(m_dc, PaletteBrush(color));
        const SelectedObject pen(m_dc, GetStockObject(NULL_PEN));
        Polygon(m_dc, points.data(), static_cast<int>(points.size()));
    }
    HDC Dc() const { return m_dc; }
    HWND Control() const { return m_control; }
    HFONT Font() const { return reinterpret_cast<HFONT>(GetCurrentObject(m_dc, OBJ_FONT)); }

private:
    HWND m_control;
    HDC m_dc;
    int m_dpi;
    SelectedObject m_font;
};

void PaintPushButton(const Painter& painter, RECT area) {
    const auto state = SendMessageW(painter.Control(), BM_GETSTATE, 0, 0);
    const bool isPressed = (state & BST_PUSHED) != 0;
    const auto type = GetWindowLongPtrW(painter.Control(), GWL_STYLE) & BS_TYPEMASK;
    painter.Fill(area, isPressed ? COLOR_BTNSHADOW : COLOR_3DLIGHT);
    painter.Frame(area, type == BS_DEFPUSHBUTTON ? COLOR_HOTLIGHT : COLOR_BTNSHADOW);
    painter.Text(TextOfWindow(painter.Control()), area,
                 DT_CENTER | DT_VCENTER | DT_SINGLELINE | painter.KeyFormat(), painter.TextIndex());
    InflateRect(&area, -3, -3);
    painter.Focus(area);
}

void PaintMark(const Painter& painter, const RECT& box, bool isOption) {
    const SelectedObject brush(painter.Dc(), PaletteBrush(painter.TextIndex()));
    if (isOption) {
        RECT dot = box;
        const int inset = painter.Scaled(4);
        InflateRect(&dot, -inset, -inset);
        const SelectedObject pen(painter.Dc(), GetStockObject(NULL_PEN));
        Ellipse(painter.Dc(), dot.left, dot.top, dot.right + 1, dot.bottom + 1);
        return;
    }
    const HPEN line = CreatePen(PS_SOLID, painter.Scaled(2), PaletteColor(painter.TextIndex()));
    {
        const SelectedObject pen(painter.Dc(), line);
        const LONG size = box.right - box.left;
        const std::array<POINT, 3> tick = {{{box.left + size / 4, box.top + size / 2},
                                            {box.left + size * 2 / 5, box.top + size * 2 / 3},
                                            {box.left + size * 3 / 4, box.top + size / 3}}};
        Polyline(painter.Dc(), tick.data(), static_cast<int>(tick.size()));
    }
    DeleteObject(line);
}

void PaintCheckBox(const Painter& painter, const RECT& area, bool isOption) {
    painter.Fill(area, COLOR_BTNFACE);
    const int size = painter.Scaled(kBoxSize);
    const LONG top = (area.top + area.bottom - size) / 2;
    const RECT box{area.left, top, area.left + size, top + size};
    {
        const HPEN line = CreatePen(PS_SOLID, 1, PaletteColor(painter.TextIndex()));
        const SelectedObject brush(painter.Dc(), PaletteBrush(COLOR_WINDOW));
        {
            const SelectedObject pen(painter.Dc(), line);
            (isOption ? Ellipse : Rectangle)(painter.Dc(), box.left, box.top, box.right,
                                             box.bottom);
        }
        DeleteObject(line);
    }
    if (SendMessageW(painter.Control(), BM_GETCHECK, 0, 0) != BST_UNCHECKED) {
        PaintMark(painter, box, isOption);
    }
    RECT text = area;
    text.left = box.right + painter.Scaled(kTextGap);
    const std::wstring caption = TextOfWindow(painter.Control());
    painter.Text(caption, text, DT_VCENTER | DT_SINGLELINE | painter.KeyFormat(),
                 painter.TextIndex());
    RECT used = text;
    DrawTextW(painter.Dc(), caption.c_str(), -1, &used, DT_CALCRECT | DT_SINGLELINE);
    const LONG height = used.bottom - used.top;
    used.top = (area.top + area.bottom - height) / 2;
    used.bottom = used.top + height;
    InflateRect(&used, 1, 0);
    if (!caption.empty()) {
        painter.Focus(used);
    }
}

// Only the line and the caption: what is inside belongs to other controls.
void PaintGroup(const Painter& painter, RECT area) {
    const std::wstring caption = TextOfWindow(painter.Control());
    RECT text = area;
    DrawTextW(painter.Dc(), caption.c_str(), -1, &text, DT_CALCRECT | DT_SINGLELINE);
    OffsetRect(&text, painter.Scaled(8), 0);
    area.top += (text.bottom - text.top) / 2;
    painter.Frame(area, COLOR_BTNSHADOW);
    if (caption.empty()) {
        return;
    }
    InflateRect(&text, painter.Scaled(2), 0);
    painter.Fill(text, COLOR_BTNFACE);
    painter.Text(caption, text, DT_CENTER | DT_SINGLELINE | painter.KeyFormat(),
                 painter.TextIndex());
}

void PaintButton(const Painter& painter, const RECT& area) {
    switch (KindOf(painter.Control())) {
        case ControlKind::CheckBox:
            PaintCheckBox(painter, area, false);
            break;
        case ControlKind::OptionButton:
            PaintCheckBox(painter, area, true);
            break;
        case ControlKind::Frame:
            PaintGroup(painter, area);
            break;
        default:
            PaintPushButton(painter, area);
            break;
    }
}

// The text of a drop-down list; a drop-down box has a text box in its place.
void PaintCombo(const Painter& painter, RECT area) {
    const HWND combo = painter.Control();
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    GetComboBoxInfo(combo, &info);
    const bool isList = (GetWindowLongPtrW(combo, GWL_STYLE) & 3) == CBS_DROPDOWNLIST;
    if (!isList && info.hwndItem != nullptr) {
        const RECT edit = BoundsInParent(info.hwndItem);
        ExcludeClipRect(painter.Dc(), edit.left, edit.top, edit.right, edit.bottom);
    }
    painter.Fill(area, isList ? COLOR_3DLIGHT : COLOR_WINDOW);
    painter.Frame(area, GetFocus() == combo ? COLOR_HOTLIGHT : COLOR_BTNSHADOW);
    painter.Arrow(info.rcButton, false, painter.TextIndex());
    if (isList) {
        RECT text = info.rcItem;
        InflateRect(&text, -painter.Scaled(2), 0);
        painter.Text(TextOfWindow(combo), text,
                     DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS,
                     painter.TextIndex());
        painter.Focus(info.rcItem);
    }
}

void PaintHeader(const Painter& painter, const RECT& area) {
    const HWND header = painter.Control();
    painter.Fill(area, COLOR_BTNFACE);
    const auto count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int column = 0; column < count; ++column) {
        wchar_t text[260] = L"";
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_FORMAT;
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        RECT cell{};
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item));
        SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&cell));
        if (count > 1) {
            painter.Fill({cell.right - 1, cell.top, cell.right, cell.bottom}, COLOR_BTNSHADOW);
        }
        InflateRect(&cell, -painter.Scaled(6), 0);
        const bool isRight = (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT;
        painter.Text(text, cell,
                     DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX |
                         (isRight ? DT_RIGHT : DT_LEFT),
                     COLOR_BTNTEXT);
    }
    painter.Fill({area.left, area.bottom - 1, area.right, area.bottom}, COLOR_BTNSHADOW);
}

void PaintTabs(const Painter& painter, const RECT& area) {
    const HWND tabs = painter.Control();
    painter.Fill(area, COLOR_BTNFACE);
    RECT page = area;
    SendMessageW(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    InflateRect(&page, 2, 2);
    painter.Frame(page, COLOR_BTNSHADOW);
    const auto count = static_cast<int>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
    const auto selected = static_cast<int>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0));
    for (int tab = 0; tab < count; ++tab) {
        wchar_t text[260] = L"";
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        RECT cell{};
        SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
        SendMessageW(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                     reinterpret_cast<LPARAM>(&cell));
        cell.bottom = page.top + 1;
        painter.Fill(cell, tab == selected ? COLOR_BTNFACE : COLOR_3DLIGHT);
        painter.Frame(cell, COLOR_BTNSHADOW);
        if (tab == selected) {
            // No line between the tab and its page.
            painter.Fill({cell.left + 1, cell.bottom - 1, cell.right - 1, cell.bottom},
                         COLOR_BTNFACE);
            painter.Fill({cell.left, cell.top, cell.right, cell.top + painter.Scaled(2)},
                         COLOR_HOTLIGHT);
        }
        painter.Text(text, cell, DT_CENTER | DT_VCENTER | DT_SINGLELINE | painter.KeyFormat(),
                     COLOR_BTNTEXT);
        if (tab == selected) {
            InflateRect(&cell, -3, -3);
            painter.Focus(cell);
        }
    }
}

void PaintUpDown(const Painter& painter, const RECT& area) {
    const LONG middle = (area.top + area.bottom) / 2;
    const RECT halves[] = {{area.left, area.top, area.right, middle},
                           {area.left, middle, area.right, area.bottom}};
    for (const RECT& half : halves) {
        painter.Fill(half, COLOR_3DLIGHT);
        painter.Frame(half, COLOR_BTNSHADOW);
        painter.Arrow(half, half.top == area.top, painter.TextIndex());
    }
}

void PaintStatusBar(const Painter& painter, const RECT& area) {
    const HWND bar = painter.Control();
    painter.Fill(area, COLOR_BTNFACE);
    painter.Fill({area.left, area.top, area.right, area.top + 1}, COLOR_BTNSHADOW);
    const auto count = static_cast<int>(SendMessageW(bar, SB_GETPARTS, 0, 0));
    for (int part = 0; part < count; ++part) {
        RECT cell{};
        SendMessageW(bar, SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&cell));
        if (part + 1 < count) {
            painter.Fill({cell.right, cell.top + 2, cell.right + 1, cell.bottom - 2},
                         COLOR_BTNSHADOW);
        }
        cell.left += painter.Scaled(2);
        const auto icon =
            reinterpret_cast<HICON>(SendMessageW(bar, SB_GETICON, static_cast<WPARAM>(part), 0));
        if (icon != nullptr) {
            const int size = std::min(painter.Scaled(16), static_cast<int>(cell.bottom - cell.top));
            DrawIconEx(painter.Dc(), cell.left, (cell.top + cell.bottom - size) / 2, icon, size,
                       size, 0, nullptr, DI_NORMAL);
            cell.left += size + painter.Scaled(2);
        }
        const auto length =
            LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(part), 0));
        std::wstring text(std::size_t{length} + 1, L'\0');
        SendMessageW(bar, SB_GETTEXTW, static_cast<WPARAM>(part),
                     reinterpret_cast<LPARAM>(text.data()));
        text.resize(length);
        painter.Text(text, cell, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS,
                     COLOR_BTNTEXT);
    }
}

}  // namespace

DarkKind DarkKindOf(HWND window) {
    struct Row {
        std::wstring_view name;
        DarkKind kind;
    };
    static constexpr Row kRows[] = {
        {L"Button", DarkKind::Button},     {L"ComboBox", DarkKind::Combo},
        {WC_HEADERW, DarkKind::Header},    {WC_TABCONTROLW, DarkKind::Tabs},
        {UPDOWN_CLASSW, DarkKind::UpDown}, {STATUSCLASSNAMEW, DarkKind::StatusBar},
        {L"Edit", DarkKind::Framed},       {WC_LISTVIEWW, DarkKind::Framed},
        {WC_TREEVIEWW, DarkKind::Framed},
    };
    wchar_t name[32] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    const auto* const row =
        std::ranges::find(kRows, std::wstring_view(name), [](const Row& one) { return one.name; });
    if (row == std::end(kRows) || KindOf(window) == ControlKind::DrawnButton) {
        return DarkKind::None;
    }
    return row->kind;
}

void PaintDark(HWND control, DarkKind kind, HDC dc) {
    const Painter painter(control, dc);
    const RECT area = ClientAreaOf(control);
    switch (kind) {
        case DarkKind::Button:
            PaintButton(painter, area);
            break;
        case DarkKind::Combo:
            PaintCombo(painter, area);
            break;
        case DarkKind::Header:
            PaintHeader(painter, area);
            break;
        case DarkKind::Tabs:
            PaintTabs(painter, area);
            break;
        case DarkKind::UpDown:
            PaintUpDown(painter, area);
            break;
        case DarkKind::StatusBar:
            PaintStatusBar(painter, area);
            break;
        case DarkKind::None:
        case DarkKind::Framed:
            break;
    }
}

void PaintDarkFrame(HWND control) {
    const auto style = GetWindowLongPtrW(control, GWL_STYLE);
    const auto extended = GetWindowLongPtrW(control, GWL_EXSTYLE);
    int width = (style & WS_BORDER) != 0 ? 1 : 0;
    width = (extended & WS_EX_CLIENTEDGE) != 0 ? 2 : width;
    const HDC dc = width > 0 ? GetWindowDC(control) : nullptr;
    if (dc == nullptr) {
        return;
    }
    RECT frame = BoundsOf(control);
    OffsetRect(&frame, -frame.left, -frame.top);
    FrameRect(dc, &frame, PaletteBrush(COLOR_BTNSHADOW));
    if (width > 1) {
        InflateRect(&frame, -1, -1);
        FrameRect(dc, &frame, PaletteBrush(COLOR_WINDOW));
    }
    ReleaseDC(control, dc);
}

bool DrawsAtOnce(DarkKind kind, UINT message) {
    switch (message) {
        case WM_ENABLE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_SETTEXT:
        case WM_UPDATEUISTATE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            return kind != DarkKind::None && kind != DarkKind::Framed;
        case BM_SETSTATE:
        case BM_SETCHECK:
        case BM_SETSTYLE:
            return kind == DarkKind::Button;
        case CB_SETCURSEL:
            return kind == DarkKind::Combo;
        case WM_MOUSEMOVE:
        case WM_MOUSELEAVE:
            return kind == DarkKind::Header || kind == DarkKind::UpDown || kind == DarkKind::Combo;
        default:
            return false;
    }
}

}  // namespace tamarind
