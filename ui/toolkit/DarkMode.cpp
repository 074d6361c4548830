#include "ui/toolkit/DarkMode.h"

#include <commctrl.h>
#include <oleacc.h>

#include <deque>
#include <string>
#include <string_view>
#include <utility>

#include "ui/toolkit/CallbackGuard.h"
#include "ui/toolkit/ControlKind.h"
#include "ui/toolkit/DarkControls.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/SystemDarkMode.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::wstring_view kSystemDialog = L"#32770";  // ours have classes of their own
constexpr UINT_PTR kSubclass = 0x4441524B;

// In pixels at 96 DPI.
constexpr int kMenuMarkWidth = 24;
constexpr int kMenuShortcutGap = 24;
constexpr int kMenuPaddingY = 4;
constexpr int kBarPaddingX = 8;
constexpr int kSeparatorHeight = 7;

void PaintControl(HWND control, DarkKind kind) {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(control, &paint);
    if (dc != nullptr) {
        PaintDark(control, kind, dc);
        EndPaint(control, &paint);
    }
}

// What the control itself draws for a message is not seen.
LRESULT CallUnseen(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isVisible = (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0;
    if (isVisible) {
        DefSubclassProc(control, WM_SETREDRAW, FALSE, 0);
    }
    const LRESULT result = DefSubclassProc(control, message, wParam, lParam);
    if (isVisible) {
        DefSubclassProc(control, WM_SETREDRAW, TRUE, 0);
        RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_NOERASE | RDW_ALLCHILDREN);
    }
    return result;
}

LRESULT CALLBACK PaintingProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR data) {
    const auto kind = static_cast<DarkKind>(data);
    switch (message) {
        case WM_NCDESTROY:
            RemoveWindowSubclass(control, PaintingProcedure, id);
            break;
        case WM_NCPAINT: {
            const LRESULT result = DefSubclassProc(control, message, wParam, lParam);
            PaintDarkFrame(control);
            return result;
        }
        case WM_PAINT:
            if (kind != DarkKind::Framed) {
                Guarded(0, [&] {
                    PaintControl(control, kind);
                    return 0;
                });
                return 0;
            }
            break;
        case WM_ERASEBKGND:
            if (kind != DarkKind::Framed) {
                return 1;
            }
            break;
        default:
            if (DrawsAtOnce(kind, message)) {
                return CallUnseen(control, message, wParam, lParam);
            }
            break;
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

BOOL CALLBACK ApplyToChild(HWND control, LPARAM) {
    ApplyPaletteToControl(control);
    return TRUE;
}

// A window of the program, or one of the tooltips that controls have made.
BOOL CALLBACK ApplyToWindow(HWND window, LPARAM) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    if (std::wstring_view(name) == TOOLTIPS_CLASSW) {
        SendMessageW(window, TTM_SETTIPBKCOLOR, PaletteColor(COLOR_INFOBK), 0);
        SendMessageW(window, TTM_SETTIPTEXTCOLOR, PaletteColor(COLOR_INFOTEXT), 0);
    } else if (std::wstring_view(name) != kSystemDialog) {
        ApplyPalette(window);
    }
    return TRUE;
}

// The background of what lies below a group of controls, or of lists and text boxes.
LRESULT ColorsOf(HDC dc, int back, int text) {
    SetBkColor(dc, PaletteColor(back));
    SetTextColor(dc, PaletteColor(text));
    return reinterpret_cast<LRESULT>(PaletteBrush(back));
}

// An entry of a menu that is drawn here. Screen readers find its text by the first member
// (Microsoft: MSAAMENUINFO).
struct DrawnEntry {
    MSAAMENUINFO accessible{};
    std::wstring text;
    bool isSeparator = false;
    bool isInBar = false;
    bool opensMenu = false;
};

// Entries that say the same are one. They live on, since a menu may be shown again at any time.
DrawnEntry& EntryFor(std::wstring text, bool isSeparator, bool isInBar, bool opensMenu) {
    static std::deque<DrawnEntry> entries;
    for (DrawnEntry& entry : entries) {
        if (entry.text == text && entry.isSeparator == isSeparator && entry.isInBar == isInBar &&
            entry.opensMenu == opensMenu) {
            return entry;
        }
    }
    DrawnEntry& entry = entries.emplace_back();
    entry.text = std::move(text);
    entry.isSeparator = isSeparator;
    entry.isInBar = isInBar;
    entry.opensMenu = opensMenu;
    entry.accessible = {MSAA_MENU_SIG, static_cast<DWORD>(entry.text.size()), entry.text.data()};
    return entry;
}

std::wstring TextOfEntry(HMENU menu, UINT place) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    if (!GetMenuItemInfoW(menu, place, TRUE, &info)) {
        return {};
    }
    std::wstring text(std::size_t{info.cch} + 1, L'\0');
    info.dwTypeData = text.data();
    ++info.cch;
    GetMenuItemInfoW(menu, place, TRUE, &info);
    text.resize(info.cch);
    return text;
}

HFONT MenuFont(int dpi) {
    static UniqueFont font;
    static int fontDpi = 0;
    if (fontDpi != dpi) {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof(metrics);
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
        metrics.lfMenuFont.lfHeight =
            MulDiv(static_cast<int>(metrics.lfMenuFont.lfHeight), dpi, SystemDpi());
        font = UniqueFont(CreateFontIndirectW(&metrics.lfMenuFont));
        fontDpi = dpi;
    }
    return font.Get();
}

SIZE SizeOfText(HDC dc, const std::wstring& text) {
    RECT area{};
    DrawTextW(dc, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
    return {area.right, area.bottom};
}

void MeasureEntry(HWND window, MEASUREITEMSTRUCT& measure) {
    const auto& entry = *reinterpret_cast<const DrawnEntry*>(measure.itemData);
    const int dpi = WindowDpi(window);
    const ScreenDC dc(window);
    const SelectedObject font(dc.Get(), MenuFont(dpi));
    const std::size_t tab = entry.text.find(L'\t');
    const SIZE size = SizeOfText(dc.Get(), entry.text.substr(0, tab));
    int width = static_cast<int>(size.cx);
    int height = static_cast<int>(size.cy) + 2 * ScaledPixels(kMenuPaddingY, dpi);
    if (!entry.isInBar) {
        width += 2 * ScaledPixels(kMenuMarkWidth, dpi);
        if (tab != std::wstring::npos) {
            width += ScaledPixels(kMenuShortcutGap, dpi) +
                     static_cast<int>(SizeOfText(dc.Get(), entry.text.substr(tab + 1)).cx);
        }
    }
    measure.itemWidth = static_cast<UINT>(width);
    measure.itemHeight =
        static_cast<UINT>(entry.isSeparator ? ScaledPixels(kSeparatorHeight, dpi) : height);
}

void DrawCheckMark(const DRAWITEMSTRUCT& item, int dpi, int color) {
    const HPEN line = CreatePen(PS_SOLID, ScaledPixels(2, dpi), PaletteColor(color));
    {
        const SelectedObject pen(item.hDC, line);
        const LONG size = ScaledPixels(10, dpi);
        const LONG left = item.rcItem.left + ScaledPixels(7, dpi);
        const LONG top = (item.rcItem.top + item.rcItem.bottom - size) / 2;
        const POINT tick[] = {{left, top + size / 2},
                              {left + size / 3, top + size - size / 5},
                              {left + size, top + size / 6}};
        Polyline(item.hDC, tick, ARRAYSIZE(tick));
    }
    DeleteObject(line);
}

// Windows would draw its own arrow over this one, in its own colors.
void DrawMenuArrow(const DRAWITEMSTRUCT& item, int dpi, int color) {
    const LONG size = ScaledPixels(4, dpi);
    const LONG right = item.rcItem.right - ScaledPixels(9, dpi);
    const LONG middle = (item.rcItem.top + item.rcItem.bottom) / 2;
    const POINT points[] = {
        {right - size, middle - size}, {right - size, middle + size}, {right, middle}};
    {
        const SelectedObject brush(item.hDC, PaletteBrush(color));
        const SelectedObject pen(item.hDC, GetStockObject(NULL_PEN));
        Polygon(item.hDC, points, ARRAYSIZE(points));
    }
    ExcludeClipRect(item.hDC, item.rcItem.left, item.rcItem.top, item.rcItem.right,
                    item.rcItem.bottom);
}

void DrawEntry(HWND window, const DRAWITEMSTRUCT& item) {
    const auto& entry = *reinterpret_cast<const DrawnEntry*>(item.itemData);
    const int dpi = WindowDpi(window);
    const bool isSelected = (item.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0;
    const bool isOff = (item.itemState & (ODS_GRAYED | ODS_DISABLED | ODS_INACTIVE)) != 0;
    const int back = isSelected && !entry.isSeparator ? COLOR_HIGHLIGHT : COLOR_MENU;
    const int color = isOff ? COLOR_GRAYTEXT : isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT;
    FillRect(item.hDC, &item.rcItem, PaletteBrush(isOff ? COLOR_MENU : back));
    RECT area = item.rcItem;
    if (entry.isSeparator) {
        area.top = (area.top + area.bottom) / 2;
        area.bottom = area.top + 1;
        FillRect(item.hDC, &area, PaletteBrush(COLOR_BTNSHADOW));
        return;
    }
    const SelectedObject font(item.hDC, MenuFont(dpi));
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, PaletteColor(color));
    const UINT keys = (item.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0U;
    const UINT format = DT_SINGLELINE | DT_VCENTER | keys;
    const std::size_t tab = entry.text.find(L'\t');
    if (entry.isInBar) {
        DrawTextW(item.hDC, entry.text.c_str(), -1, &area, format | DT_CENTER);
        return;
    }
    if ((item.itemState & ODS_CHECKED) != 0) {
        DrawCheckMark(item, dpi, color);
    }
    area.left += ScaledPixels(kMenuMarkWidth, dpi);
    area.right -= ScaledPixels(kMenuMarkWidth, dpi);
    const std::wstring text = entry.text.substr(0, tab);
    DrawTextW(item.hDC, text.c_str(), -1, &area, format);
    if (tab != std::wstring::npos) {
        DrawTextW(item.hDC, entry.text.c_str() + tab + 1, -1, &area, format | DT_RIGHT);
    }
    if (entry.opensMenu) {
        DrawMenuArrow(item, dpi, color);
    }
}

wchar_t Lower(wchar_t character) {
    return static_cast<wchar_t>(reinterpret_cast<ULONG_PTR>(
        CharLowerW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(character)))));
}

// Windows looks for access keys only in entries that it draws itself.
std::optional<LRESULT> FindAccessKey(HMENU menu, wchar_t key) {
    const int count = GetMenuItemCount(menu);
    for (int place = 0; place < count; ++place) {
        const std::wstring text = TextOfEntry(menu, static_cast<UINT>(place));
        for (std::size_t at = text.find(L'&'); at != std::wstring::npos && at + 1 < text.size();
             at = text.find(L'&', at + 2)) {
            if (text[at + 1] != L'&' && Lower(text[at + 1]) == Lower(key)) {
                return MAKELRESULT(place, MNC_EXECUTE);
            }
        }
    }
    return std::nullopt;
}

}  // namespace

void ApplyPaletteToControl(HWND control) {
    const DarkKind kind = DarkKindOf(control);
    if (KindOf(control) == ControlKind::List) {
        const auto back = static_cast<LPARAM>(PaletteColor(COLOR_WINDOW));
        SendMessageW(control, LVM_SETBKCOLOR, 0, back);
        SendMessageW(control, LVM_SETTEXTBKCOLOR, 0, back);
        SendMessageW(control, LVM_SETTEXTCOLOR, 0,
                     static_cast<LPARAM>(PaletteColor(COLOR_WINDOWTEXT)));
    }
    if (kind != DarkKind::None) {
        if (IsDark()) {
            SetWindowSubclass(control, PaintingProcedure, kSubclass, static_cast<DWORD_PTR>(kind));
        } else {
            RemoveWindowSubclass(control, PaintingProcedure, kSubclass);
        }
        UseSystemDarkModeFor(control, IsDark());
    }
}

void ApplyPalette(HWND window) {
    static bool wasDark = false;
    if (wasDark || IsDark()) {
        wasDark = true;
        UseSystemDarkModeFor(window, IsDark());
        EnumChildWindows(window, ApplyToChild, 0);
        RedrawWindow(window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}

void ApplyPaletteToProgram() {
    UseSystemDarkMode(IsDark());
    EnumThreadWindows(GetCurrentThreadId(), ApplyToWindow, 0);
}

std::optional<LRESULT> AnswerPaletteMessage(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
    if (!IsDark()) {
        return std::nullopt;
    }
    const auto dc = reinterpret_cast<HDC>(wParam);
    const auto control = reinterpret_cast<HWND>(lParam);
    switch (message) {
        case WM_ERASEBKGND: {
            const RECT area = ClientAreaOf(window);
            FillRect(dc, &area, PaletteBrush(COLOR_BTNFACE));
            return 1;
        }
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            return ColorsOf(dc, COLOR_BTNFACE,
                            IsWindowEnabled(control) ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
            return ColorsOf(dc, COLOR_WINDOW, COLOR_WINDOWTEXT);
        case WM_MEASUREITEM: {
            auto& measure = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            if (measure.CtlType == ODT_MENU) {
                MeasureEntry(window, measure);
                return TRUE;
            }
            return std::nullopt;
        }
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (item.CtlType == ODT_MENU) {
                DrawEntry(window, item);
                return TRUE;
            }
            return std::nullopt;
        }
        case WM_INITMENUPOPUP:
            ApplyPaletteToMenu(reinterpret_cast<HMENU>(wParam), false);
            return std::nullopt;  // the window may have something to do with it, too
        case WM_MENUCHAR:
            return FindAccessKey(reinterpret_cast<HMENU>(lParam), LOWORD(wParam));
        default:
            return std::nullopt;
    }
}

void PaintMenuBarRest(HWND window) {
    MENUBARINFO bar{};
    bar.cbSize = sizeof(bar);
    const int count = GetMenuItemCount(GetMenu(window));
    if (!IsDark() || count <= 0 || !GetMenuBarInfo(window, OBJID_MENU, 0, &bar)) {
        return;
    }
    const RECT frame = BoundsOf(window);
    RECT rest = bar.rcBar;
    ++rest.bottom;  // the line below the bar
    OffsetRect(&rest, static_cast<int>(-frame.left), static_cast<int>(-frame.top));
    const HDC dc = GetWindowDC(window);
    for (int item = 0; item < count; ++item) {
        RECT own{};
        if (GetMenuItemRect(window, GetMenu(window), static_cast<UINT>(item), &own)) {
            OffsetRect(&own, static_cast<int>(-frame.left), static_cast<int>(-frame.top));
            ExcludeClipRect(dc, own.left, own.top, own.right, own.bottom);
        }
    }
    FillRect(dc, &rest, PaletteBrush(COLOR_MENUBAR));
    ReleaseDC(window, dc);
}

void ApplyPaletteToMenu(HMENU menu, bool isBar) {
    static bool wasDark = false;
    if (!wasDark && !IsDark()) {
        return;
    }
    wasDark = true;
    MENUINFO background{};
    background.cbSize = sizeof(background);
    background.fMask = MIM_BACKGROUND;
    background.hbrBack = IsDark() ? PaletteBrush(COLOR_MENU) : nullptr;
    SetMenuInfo(menu, &background);
    const int count = GetMenuItemCount(menu);
    for (int at = 0; at < count; ++at) {
        const auto place = static_cast<UINT>(at);
        MENUITEMINFOW info{};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        GetMenuItemInfoW(menu, place, TRUE, &info);
        const bool isDrawn = (info.fType & MFT_OWNERDRAW) != 0;
        if (IsDark()) {
            info.dwItemData = reinterpret_cast<ULONG_PTR>(
                &EntryFor(TextOfEntry(menu, place), (info.fType & MFT_SEPARATOR) != 0, isBar,
                          GetSubMenu(menu, at) != nullptr));
            info.fType |= MFT_OWNERDRAW;
        } else {
            info.fType &= ~static_cast<UINT>(MFT_OWNERDRAW);
        }
        if (IsDark() || isDrawn) {
            SetMenuItemInfoW(menu, place, TRUE, &info);
        }
    }
}

}  // namespace tamarind
