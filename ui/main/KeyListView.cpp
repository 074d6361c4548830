#include "ui/main/KeyListView.h"

#include "core/WideText_win32.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr Twips kColumnMargin{500};
constexpr int kIconCount = 3;  // each stands in the picture list twice, the second time dimmed

}  // namespace

bool KeyListView::Create(HWND parent) {
    return ListView1.Create(parent, kIdListView1, L"Key", *this);
}

void KeyListView::ApplyLook(const MainLook& look) {
    m_activeColor = look.activeKey;
    ListView1.SetImages(look.keyPictures.Get());
    ListView1.SetColors(look.foreground, look.background);
    ListView1.ShowGridLines(look.showsGridLines);
    ListView1.SetBorder(look.border);
    ApplyUserFont(ListView1, look.font, true, 0, look.dpi);
    ListView1.SetColumnMargin(ToPixels(kColumnMargin, look.dpi).value);
}

void KeyListView::Fill() {
    ListView1.SetRowCount(static_cast<int>(m_session.Keys().Size()));
    ShowCurrentKey();
}

void KeyListView::ShowCurrentKey() {
    const std::size_t row = m_session.Keys().RowOf(m_session.CurrentKey());
    if (row < m_session.Keys().Size() && static_cast<int>(row) != ListView1.SelectedRow()) {
        ListView1.SelectRow(static_cast<int>(row));
    }
}

// Nothing where the list asks for a row that the session has dropped already.
std::optional<KeyRecord> KeyListView::RecordOf(int row) const {
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_session.Keys().Size()) {
        return std::nullopt;
    }
    return m_session.Record(m_session.Keys().KeyAt(at));
}

std::wstring KeyListView::RowText(int row) const {
    const auto record = RecordOf(row);
    return record ? Widen(VisibleText(*record)) : std::wstring();
}

RowLook KeyListView::LookOfRow(int row) const {
    RowLook look;
    if (const auto record = RecordOf(row)) {
        const KeyLooks looks = record->Looks();
        look.picture = static_cast<int>(looks.smallIcon) - 1 + (looks.isGhosted ? kIconCount : 0);
        look.color =
            looks.foreColor == KeyColor::Active ? m_activeColor : GetSysColor(COLOR_GRAYTEXT);
    }
    return look;
}

void KeyListView::OnRowSelected(int row) {
    const auto at = static_cast<std::size_t>(row);
    // The session tells of the key that it made the current one by itself.
    if (at < m_session.Keys().Size() && m_session.Keys().KeyAt(at) != m_session.CurrentKey()) {
        m_session.ShowKeyDetails(at);
    }
}

void KeyListView::OnListMenu(POINT at) {
    m_actions.ShowPopup(PopupMenu::KeyList, at);
}

}  // namespace tamarind
