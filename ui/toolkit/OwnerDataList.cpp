#include "ui/toolkit/OwnerDataList.h"

#include <utility>

#include "ui/toolkit/Palette.h"

namespace tamarind {

void OwnerDataList::SetUp(DWORD moreStyles) {
    const DWORD styles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | moreStyles;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, styles, static_cast<LPARAM>(styles));
    ShowMarksInTips(LVM_GETTOOLTIPS);
}

bool OwnerDataList::AddColumn(std::size_t column, const std::wstring& title, int format) {
    LVCOLUMNW info{};
    info.mask = LVCF_TEXT | LVCF_FMT;
    info.fmt = format;
    info.pszText = const_cast<wchar_t*>(title.c_str());
    return Send(LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&info)) != -1;
}

void OwnerDataList::ShowSelected(int row, bool isSelected) {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = isSelected ? item.stateMask : 0;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void OwnerDataList::EnsureVisible(int row, bool isPartEnough) {
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), isPartEnough ? TRUE : FALSE);
}

std::vector<int> OwnerDataList::SelectedRows() const {
    std::vector<int> rows;
    for (int row = RowShownSelected(); row != kNoRow; row = NextRow(row, LVNI_SELECTED)) {
        rows.push_back(row);
    }
    return rows;
}

void OwnerDataList::SelectAll() {
    LVITEMW item{};
    item.stateMask = item.state = LVIS_SELECTED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(kNoRow), reinterpret_cast<LPARAM>(&item));
}

HFONT OwnerDataList::FontFor(bool isBold, bool isItalic) {
    const auto own = reinterpret_cast<HFONT>(Send(WM_GETFONT));
    if (!isBold && !isItalic) {
        return own;
    }
    UniqueFont& font = m_fonts[(isBold ? 1U : 0U) + (isItalic ? 2U : 0U) - 1];
    if (!font) {
        LOGFONTW look{};
        GetObjectW(own, sizeof(look), &look);
        look.lfWeight = isBold ? FW_BOLD : look.lfWeight;
        look.lfItalic = isItalic ? TRUE : look.lfItalic;
        font = UniqueFont(CreateFontIndirectW(&look));
    }
    return font.Get();
}

void OwnerDataList::UseSelectionColors(NMLVCUSTOMDRAW& draw) const {
    const bool isSelected =
        Send(LVM_GETITEMSTATE, static_cast<WPARAM>(draw.nmcd.dwItemSpec), LVIS_SELECTED) != 0;
    if (IsDark() && isSelected) {
        const bool hasFocus = GetFocus() == Handle();
        draw.clrText = SelectionTextColor(hasFocus);
        draw.clrTextBk = SelectionColor(hasFocus);
        // As long as a row says that it is selected, the list takes its own colors.
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
    }
}

void OwnerDataList::Answer(LVITEMW& item, std::wstring text) {
    std::wstring& kept = m_texts[m_nextText++ % m_texts.size()];
    kept = std::move(text);
    item.pszText = kept.data();
}

}  // namespace tamarind
