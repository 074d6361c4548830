#include "ui/toolkit/ReportList.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// Posted by the list to itself when it gets another font, which takes effect after WM_SETFONT.
constexpr UINT kMeasureTexts = WM_APP;

constexpr int kCellMargins = 24;  // pixels at 96 DPI, beside the longest text of a column
constexpr int kBoxWidth = 20;     // of a check box with its distance
// Names, values, numbers and paths run from left to right, also in a list that does not.
constexpr wchar_t kLeftToRight = L'\u202A';
constexpr wchar_t kEndOfDirection = L'\u202C';
// More would make opening a dialog slow.
constexpr int kMeasuredRows = 200;

// Divides the width among the columns. A column that wants no more than an even share gets what it
// wants, and the others share the rest evenly. Width that is left over is given to all alike. For a
// width of 300, the wanted 50, 200 and 400 become 50, 125 and 125; 50, 60 and 70 become 90, 100 and
// 110.
std::vector<int> SharedWidths(std::vector<int> wanted, int width) {
    std::vector<std::size_t> byWidth(wanted.size());
    std::iota(byWidth.begin(), byWidth.end(), std::size_t{0});
    std::ranges::sort(byWidth, {}, [&](std::size_t column) { return wanted[column]; });
    int rest = width;
    int columns = static_cast<int>(wanted.size());
    for (const std::size_t column : byWidth) {
        wanted[column] = std::min(wanted[column], rest / columns--);
        rest -= wanted[column];
    }
    for (int& column : wanted) {
        column += rest / static_cast<int>(wanted.size());
    }
    return wanted;
}

// Each has a contrast of at least 4.5 to 1 on a light background and on the dark palette's. With
// high contrast the signs in front of the lines have to do.
COLORREF ColorOfTone(CellTone tone) {
    const COLORREF background = PaletteColor(COLOR_WINDOW);
    const bool isLight =
        GetRValue(background) + GetGValue(background) + GetBValue(background) > 3 * 200;
    switch (tone) {
        case CellTone::Pale:
            return PaletteColor(COLOR_GRAYTEXT);
        case CellTone::Removed:
            return isLight    ? RGB(0xA0, 0x10, 0x10)
                   : IsDark() ? RGB(0xFF, 0x9A, 0x90)
                              : PaletteColor(COLOR_WINDOWTEXT);
        case CellTone::Added:
            return isLight    ? RGB(0x00, 0x64, 0x00)
                   : IsDark() ? RGB(0x8C, 0xD9, 0x8C)
                              : PaletteColor(COLOR_WINDOWTEXT);
        case CellTone::Normal:
        case CellTone::Heading:
            break;
    }
    return PaletteColor(COLOR_WINDOWTEXT);
}

}  // namespace

std::vector<ReportColumn> TextColumns(const TextByNumber& text,
                                      std::span<const std::uint16_t> titles) {
    std::vector<ReportColumn> columns;
    for (const std::uint16_t number : titles) {
        columns.push_back({text(number)});
    }
    return columns;
}

ReportList::ReportList() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_LISTVIEW_CLASSES;
    InitCommonControlsEx(&controls);
}

bool ReportList::Attach(HWND dialog, int id, const std::vector<ReportColumn>& columns,
                        ReportRows rows) {
    m_rows = std::move(rows);
    if (!AttachControl(dialog, id)) {
        return false;
    }
    SetUpColumns(columns);
    return true;
}

bool ReportList::Create(HWND parent, int id, ReportRows rows,
                        const std::vector<ReportColumn>& columns) {
    m_rows = std::move(rows);
    constexpr DWORD kStyle = WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL |
                             LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
    const bool hasTitles = !columns.empty();
    if (!CreateControl(WC_LISTVIEWW, parent, id, kStyle | (hasTitles ? 0U : LVS_NOCOLUMNHEADER))) {
        return false;
    }
    SetUpColumns(hasTitles ? columns : std::vector<ReportColumn>{{L""}});
    return true;
}

void ReportList::SetUpColumns(const std::vector<ReportColumn>& columns) {
    SetUp(LVS_EX_INFOTIP);
    if (m_rows.isChecked) {
        Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK);
        ShowCheckBoxes(true);
    }
    for (const ReportColumn& column : columns) {
        m_titles.push_back(column.title);
        AddColumn(m_titles.size() - 1, column.title, column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT);
    }
    MeasureTexts();
}

void ReportList::ShowCheckBoxes(bool isVisible) {
    m_hasCheckBoxes = isVisible;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, isVisible ? LVS_EX_CHECKBOXES : 0);
}

SIZE ReportList::SizeFor(int rows) const {
    RECT row{LVIR_BOUNDS, 0, 0, 0};
    Send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    const int width = std::accumulate(m_wantedWidths.begin(), m_wantedWidths.end(), 0);
    RECT bounds{0, 0, width, rows * (row.bottom - row.top)};
    AdjustWindowRectEx(&bounds, WS_CHILD | WS_BORDER, FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_EXSTYLE)));
    return SizeOf(bounds);
}

void ReportList::SetTitles(std::vector<std::wstring> titles) {
    m_titles = std::move(titles);
    for (std::size_t column = 0; column < m_titles.size(); ++column) {
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT;
        info.pszText = m_titles[column].data();
        Send(LVM_SETCOLUMNW, column, reinterpret_cast<LPARAM>(&info));
    }
    MeasureTexts();
}

void ReportList::SetRowCount(int count) {
    if (const int row = std::exchange(m_row, kNoRow); row != kNoRow) {
        ShowSelected(row, false);
    }
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), 0);
    if (count > 0) {
        EnsureVisible(0);
        MeasureTexts();
    }
}

void ReportList::SelectRow(int row) {
    Send(LVM_SETSELECTIONMARK, 0, row);
    ShowSelected(row, true);
    EnsureVisible(row);
}

void ReportList::Redraw() {
    InvalidateRect(Handle(), nullptr, FALSE);
}

void ReportList::MeasureTexts() {
    const auto widthOf = [this](const std::wstring& text) {
        return static_cast<int>(
            Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
    };
    const int margins =
        ScaledPixels(kCellMargins + (m_hasCheckBoxes ? kBoxWidth : 0), WindowDpi(Handle()));
    const int rows = std::min(RowCount(), kMeasuredRows);
    m_wantedWidths.clear();
    for (const std::wstring& title : m_titles) {
        const int column = static_cast<int>(m_wantedWidths.size());
        int width = widthOf(title);
        for (int row = 0; row < rows; ++row) {
            width = std::max(width, widthOf(m_rows.text(row, column)));
        }
        m_wantedWidths.push_back(width + margins);
    }
    FitColumns();
}

void ReportList::FitColumns() {
    WPARAM column = 0;
    for (const int width :
         SharedWidths(m_wantedWidths, static_cast<int>(ClientSizeOf(Handle()).cx))) {
        if (Send(LVM_GETCOLUMNWIDTH, column) != width) {
            Send(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(width, 0));
        }
        ++column;
    }
}

std::optional<LRESULT> ReportList::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            OnGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            OnItemChanged();
            return 0;
        case LVN_ODFINDITEMW:
            return kNoRow;
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case NM_KILLFOCUS:
            if (m_rows.onLeft) {
                m_rows.onLeft();
            }
            return 0;
        case NM_CLICK:
            OnClick(reinterpret_cast<const NMITEMACTIVATE&>(header));
            return 0;
        case NM_DBLCLK:
            OnDoubleClick(reinterpret_cast<const NMITEMACTIVATE&>(header).iItem);
            return 0;
        default:
            return std::nullopt;
    }
}

void ReportList::OnGetDisplayInfo(LVITEMW& item) {
    if ((item.mask & LVIF_TEXT) != 0) {
        std::wstring text = m_rows.text(item.iItem, item.iSubItem);
        // Marks of Unicode keep the text running from left to right in a mirrored list.
        if ((GetWindowLongPtrW(Handle(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0) {
            text = kLeftToRight + text + kEndOfDirection;
        }
        Answer(item, std::move(text));
    }
    if ((item.mask & LVIF_STATE) != 0 && m_hasCheckBoxes) {
        // The second picture of the list is the checked box.
        item.state = INDEXTOSTATEIMAGEMASK(m_rows.isChecked(item.iItem) ? 2 : 1);
        item.stateMask = LVIS_STATEIMAGEMASK;
    }
}

void ReportList::OnClick(const NMITEMACTIVATE& click) const {
    if (m_rows.onClicked) {
        if (click.iItem != kNoRow) {
            m_rows.onClicked(click.iItem);
        }
        return;
    }
    LVHITTESTINFO hit{};
    hit.pt = click.ptAction;
    Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if ((hit.flags & LVHT_ONITEMSTATEICON) != 0 && (hit.flags & LVHT_ONITEMLABEL) == 0) {
        Toggle(hit.iItem);
    }
}

void ReportList::OnDoubleClick(int row) const {
    if (row != kNoRow && m_rows.onActivated) {
        m_rows.onActivated(row);
    } else {
        Toggle(row);
    }
}

void ReportList::OnItemChanged() {
    const int focused = NextRow(kNoRow, LVNI_SELECTED | LVNI_FOCUSED);
    const int row = focused != kNoRow ? focused : RowShownSelected();
    if (std::exchange(m_row, row) != row && m_rows.onSelected) {
        m_rows.onSelected(row);
    }
}

LRESULT ReportList::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return m_rows.tone || IsDark() ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
        case CDDS_ITEMPREPAINT:
            UseSelectionColors(draw);
            return m_rows.tone ? CDRF_NOTIFYSUBITEMDRAW : CDRF_NEWFONT;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            SetTone(draw, m_rows.tone(static_cast<int>(draw.nmcd.dwItemSpec), draw.iSubItem));
            UseSelectionColors(draw);
            return CDRF_NEWFONT;
        default:
            return CDRF_DODEFAULT;
    }
}

void ReportList::SetTone(NMLVCUSTOMDRAW& draw, CellTone tone) {
    draw.clrText = ColorOfTone(tone);
    const auto font = reinterpret_cast<HFONT>(Send(WM_GETFONT));
    SelectObject(draw.nmcd.hdc, tone == CellTone::Heading ? BoldFont() : font);
}

void ReportList::Toggle(int row) const {
    if (row != kNoRow && m_rows.onToggled) {
        m_rows.onToggled(row);
    }
}

std::optional<LRESULT> ReportList::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_SIZE:
            FitColumns();
            return std::nullopt;
        case WM_SETFONT:
            ForgetFonts();
            PostMessageW(Handle(), kMeasureTexts, 0, 0);
            return std::nullopt;
        case kMeasureTexts:
            MeasureTexts();
            return 0;
        case WM_KEYDOWN:
            if (m_rows.onKey && m_rows.onKey(wParam)) {
                return 0;
            }
            if (wParam != VK_SPACE || m_row == kNoRow || !m_rows.onToggled) {
                return std::nullopt;
            }
            Toggle(m_row);
            return 0;
        case WM_CHAR:
            // Texts cannot be found by typing; the control would beep.
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace tamarind
