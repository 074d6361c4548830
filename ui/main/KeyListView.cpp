#include "ui/main/KeyListView.h"

#include <windowsx.h>

#include <algorithm>

#include "core/text/Unicode.h"
#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Twips kColumnMargin{500};
constexpr Twips kLeastKeyColumn{2000};
// The picture list has each icon twice: the three as they are, then the three dimmed.
constexpr int kIconCount = 3;
constexpr UINT kNextKeyMs = 50;
constexpr std::size_t kRowsBelow = 3;

// The sample fits beside the column.
constexpr Twips kSampleMargin{90};
constexpr Twips kSampleSize{375};

}  // namespace

KeyListView::KeyListView(EditorSession& session, MainWindowActions& actions)
    : m_workplace(session.Place()),
      m_selection(session.Selection()),
      m_commands(session.Commands()),
      m_values(session.Values()),
      m_filter(session.Filter()),
      m_editing(session.Editing()),
      m_keyColumns(session.Columns()),
      m_actions(actions),
      m_filterBar(session, actions),
      m_noHits([this] { m_actions.OpenOtherDataFile(); }) {
    m_selection.Rows().Watchers().Add(*this);
    m_keyColumns.Watchers().Add(*this);
}

KeyListView::~KeyListView() {
    m_keyColumns.Watchers().Remove(*this);
    m_selection.Rows().Watchers().Remove(*this);
}

bool KeyListView::Create(HWND parent) {
    WindowParams params;
    params.className = L"TamarindKeyListPane";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdKeyListPane;
    ListView1.SetChildDescriber([this](LONG child) { return DescribeRow(child - 1); });
    return CreateHandle(params) && m_filterBar.Create(Handle()) &&
           ListView1.Create(Handle(), kIdListView1, Widen(m_workplace.Text(text::kKey)), *this);
}

// The columns that are hidden are told, too.
std::optional<AccessibleInfo> KeyListView::DescribeRow(LONG row) const {
    const auto at = static_cast<std::size_t>(row);
    if (row < 0 || at >= m_selection.Rows().Keys().Size()) {
        return std::nullopt;
    }
    const KeyNumber key = m_selection.Rows().Keys().KeyAt(at);
    AccessibleInfo info;
    info.name = Widen(VisibleText(m_selection.Rows().Record(key)));
    info.description = Widen(m_values.SpokenFor(key));
    return info;
}

void KeyListView::ApplyLanguage() {
    KeepColumns();
    ShowColumns();
}

// The list counts the column of the key first, wherever it stands.
void KeyListView::ShowColumns() {
    const std::vector<ShownColumn> shown = m_keyColumns.Shown();
    m_columns = {KeyColumn::Key};
    std::vector<int> order;
    for (const ShownColumn& one : shown) {
        const bool isKey = one.column == KeyColumn::Key;
        order.push_back(isKey ? 0 : static_cast<int>(m_columns.size()));
        if (!isKey) {
            m_columns.push_back(one.column);
        }
    }
    std::vector<ListColumn> columns;
    for (const KeyColumn column : m_columns) {
        const auto found = std::ranges::find(shown, column, &ShownColumn::column);
        columns.push_back(
            {Widen(m_keyColumns.Title(column)), ToPixels(Twips{found->width}, m_dpi).value});
    }
    ListView1.SetColumns(columns, order);
}

void KeyListView::KeepColumns() const {
    if (m_columns.size() < 2) {
        return;
    }
    const std::vector<ShownColumn> former = m_keyColumns.Shown();
    std::vector<ShownColumn> columns;
    for (const int place : ListView1.ColumnOrder()) {
        const KeyColumn column = m_columns[static_cast<std::size_t>(place)];
        const auto stored = std::ranges::find(former, column, &ShownColumn::column);
        const Twips width{stored == former.end() ? 0 : stored->width};
        columns.push_back(
            {column, ToTwips(Pixels{ListView1.ColumnWidth(place)}, m_dpi, width).value});
    }
    m_keyColumns.Keep(columns);
}

// A column that has come takes its room from that of the key, as far as that has any to spare.
void KeyListView::OnColumnsChanged() {
    CloseInplaceEdit();
    ShowColumns();
    int others = 0;
    for (int column = 1; column < static_cast<int>(m_columns.size()); ++column) {
        others += ListView1.ColumnWidth(column);
    }
    const int room = static_cast<int>(ClientSizeOf(ListView1.Handle()).cx) - others;
    const int least = ToPixels(kLeastKeyColumn, m_dpi).value;
    if (others > 0 && room < ListView1.ColumnWidth(0)) {
        ListView1.SetColumnWidth(0, std::max(room, least));
    }
}

LRESULT KeyListView::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        default:
            return Window::HandleMessage(message, wParam, lParam);
    }
}

void KeyListView::Layout() {
    RECT area = ClientAreaOf(Handle());
    if (m_filterBar.IsVisible()) {
        const LONG bottom = std::min<LONG>(m_filterBar.IdealHeight(), area.bottom);
        m_filterBar.SetBounds({0, 0, area.right, bottom});
        area.top = bottom;
    }
    ListView1.SetBounds(area);
}

void KeyListView::ApplyLook(const MainLook& look) {
    m_activeColor = look.activeKey;
    ListView1.SetImages(look.keyPictures.Get());
    ListView1.SetColors(look.foreground, look.background);
    ListView1.ShowGridLines(look.showsGridLines);
    ListView1.SetBorder(look.border);
    ApplyUserFont(ListView1, look.font, true, 0, look.dpi);
    KeepColumns();
    m_dpi = look.dpi;
    ShowColumns();
    ListView1.SetColumnMargin(ToPixels(kColumnMargin, look.dpi).value);
    m_font = look.font;
    ApplyLookToInplaceEdit();
    m_noHits.ApplyLook(look);
    m_filterBar.ApplyLook(look);
    Layout();
    PlaceColorSample();
}

void KeyListView::ApplyLookToInplaceEdit() {
    if (txtInplaceEdit.Handle() != nullptr) {
        ApplyUserFont(txtInplaceEdit, m_font, true, 0, m_dpi);
        txtInplaceEdit.SetDpi(m_dpi);
    }
}

void KeyListView::OnKeyListChanged() {
    CloseInplaceEdit();
    ListView1.SetRowCount(static_cast<int>(m_selection.Rows().Keys().Size()));
    ShowNote();
    OnKeyShown();
}

// What stands in place of hits, below the titles of the columns.
void KeyListView::ShowNote() {
    const std::string text = m_filter.EmptyText();
    m_noHits.Show(Handle(), Widen(text),
                  text.empty() ? std::wstring() : Widen(m_filter.OtherHits()));
    PlaceNote();
}

void KeyListView::PlaceNote() {
    RECT area = BoundsInParent(ListView1.Handle());
    area.top += ListView1.HeaderHeight();
    m_noHits.SetBounds(area, m_dpi);
}

// Selects the current key and scrolls it into view.
void KeyListView::OnKeyShown() {
    if (const auto current = m_selection.Rows().CurrentRow()) {
        const int row = static_cast<int>(*current);
        const bool isAlone = m_selection.Rows().SelectedKeys().size() == 1;
        if (row != ListView1.SelectedRow() || (isAlone && ListView1.SelectedCount() > 1)) {
            txtInplaceEdit.Close();
            ListView1.SelectRow(row);
        }
        // A row that is partly visible is enough: if it scrolled between the two clicks of a
        // double-click, the second one would hit another row.
        ListView1.EnsureVisible(row, true);
    }
    ShowColor();
}

// Also scrolls some rows below the key into view. If there is no room for all, the row of the key
// comes first.
void KeyListView::OnWentToKey(const std::optional<DescriptionPart>&) {
    if (const auto row = m_selection.Rows().CurrentRow()) {
        const std::size_t last = std::min(*row + kRowsBelow, m_selection.Rows().Keys().Size() - 1);
        ListView1.EnsureVisible(static_cast<int>(last));
        ListView1.EnsureVisible(static_cast<int>(*row));
    }
}

void KeyListView::OnKeyChanged(KeyNumber key) {
    const std::size_t row = m_selection.Rows().Keys().RowOf(key);
    if (row < m_selection.Rows().Keys().Size()) {
        ListView1.RedrawRow(static_cast<int>(row));
    }
    if (key == m_selection.Rows().CurrentKey()) {
        ShowColor();
    }
}

void KeyListView::OnManyKeysChanged() {
    ListView1.RedrawRows();
    ShowColor();
}

// The sample is made when the first key with a color is shown.
void KeyListView::ShowColor() {
    const auto key = m_selection.Rows().EditableKey();
    const auto sample = key ? m_values.ColorOf(*key) : std::nullopt;
    if (sample && cmdColorSample.Handle() == nullptr) {
        cmdColorSample.Create(Handle(), kIdCmdColorSample);
    }
    if (cmdColorSample.Handle() == nullptr) {
        return;
    }
    if (sample) {
        cmdColorSample.SetColor(sample->isSystemColor ? std::nullopt
                                                      : std::optional<COLORREF>(sample->color));
        PlaceColorSample();
    }
    cmdColorSample.Show(sample.has_value());
}

// At the right edge of the list, below the column title and beside the scroll bar, if there is one.
void KeyListView::PlaceColorSample() {
    if (cmdColorSample.Handle() == nullptr) {
        return;
    }
    const auto pixels = [this](Twips length) { return ToPixels(length, m_dpi).value; };
    const HWND list = ListView1.Handle();
    RECT area = BoundsOf(list);
    RECT inside = ClientAreaOf(list);
    MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&inside), 2);
    if ((GetWindowLongPtrW(list, GWL_STYLE) & WS_VSCROLL) != 0) {
        area.right = inside.right;
    }
    area.top = inside.top + ListView1.HeaderHeight();
    MapWindowPoints(nullptr, GetParent(list), reinterpret_cast<POINT*>(&area), 2);
    const int size = pixels(kSampleSize);
    const int margin = pixels(kSampleMargin);
    SetWindowPos(cmdColorSample.Handle(), HWND_TOP, area.right - margin - size, area.top + margin,
                 size, size, SWP_NOACTIVATE);
}

bool KeyListView::IsPart(HWND window) const {
    return window != nullptr && (window == ListView1.Handle() || window == txtInplaceEdit.Handle());
}

void KeyListView::BeginInplaceEdit() {
    if (txtInplaceEdit.IsOpen()) {
        SetFocus(txtInplaceEdit.Handle());
    } else if (!CreateInplaceEdit()) {
        return;
    } else if (const auto start = m_commands.BeginInplaceEdit()) {
        const int row = static_cast<int>(m_selection.Rows().CurrentRow().value_or(0));
        ListView1.EnsureVisible(row);
        txtInplaceEdit.Open(row, Widen(start->text), start->selectionStart);
    }
}

// Made on the first edit, because most runs of the program end without one.
bool KeyListView::CreateInplaceEdit() {
    if (txtInplaceEdit.Handle() == nullptr) {
        if (!txtInplaceEdit.Create(Handle(), kIdTxtInplaceEdit, *this)) {
            return false;
        }
        ApplyLookToInplaceEdit();
    }
    return true;
}

void KeyListView::CloseInplaceEdit() {
    Timer1.Stop();
    txtInplaceEdit.Close();
}

bool KeyListView::OnTextEntered(const std::wstring& text) {
    if (!m_commands.StoreEditedValue(Narrow(text))) {
        return false;
    }
    ContinueWithNextKey();
    return true;
}

void KeyListView::ContinueWithNextKey() {
    if (m_commands.SelectsNextKey()) {
        Timer1.Start(ListView1.Handle(), kNextKeyMs);
    }
}

void KeyListView::OnNextKey() {
    Timer1.Stop();
    // A dialog or a save that has begun meanwhile keeps the focus.
    const bool isFree =
        IsWindowEnabled(GetAncestor(ListView1.Handle(), GA_ROOT)) && !m_workplace.IsBusy();
    if (isFree && m_selection.Rows().SelectNextKey()) {
        BeginInplaceEdit();
    }
}

// Nothing if the list asks for a row that no longer exists.
std::optional<KeyRecord> KeyListView::RecordOf(int row) const {
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_selection.Rows().Keys().Size()) {
        return std::nullopt;
    }
    return m_selection.Rows().Record(m_selection.Rows().Keys().KeyAt(at));
}

std::wstring KeyListView::RowText(int row) const {
    const auto record = RecordOf(row);
    return record ? Widen(VisibleText(*record)) : std::wstring();
}

std::wstring KeyListView::CellText(int row, int column) const {
    const auto at = static_cast<std::size_t>(row);
    const auto which = static_cast<std::size_t>(column);
    return at < m_selection.Rows().Keys().Size() && which < m_columns.size()
               ? Widen(m_keyColumns.CellText(m_selection.Rows().Keys().KeyAt(at), m_columns[which]))
               : std::wstring();
}

RECT KeyListView::CurrentRowBounds() const {
    RECT row = ListView1.RowBounds(static_cast<int>(m_selection.Rows().CurrentRow().value_or(0)));
    MapWindowPoints(ListView1.Handle(), nullptr, reinterpret_cast<POINT*>(&row), 2);
    return row;
}

RowLook KeyListView::LookOfRow(int row) const {
    RowLook look;
    if (const auto record = RecordOf(row)) {
        const KeyLooks looks = record->Looks();
        look.picture = static_cast<int>(looks.smallIcon) - 1 + (looks.isGhosted ? kIconCount : 0);
        look.color =
            looks.foreColor == KeyColor::Active ? m_activeColor : PaletteColor(COLOR_GRAYTEXT);
        look.isBold = DiffersFromKnownDefault(*record);
        look.isItalic = !looks.isGhosted && !looks.isChecked;  // commented out
        look.marks = MarksOf(*record);
    }
    return look;
}

// In the name and in the value behind it.
std::vector<MarkedPart> KeyListView::MarksOf(const KeyRecord& record) const {
    std::vector<MarkedPart> marks;
    if (!m_filter.IsOn()) {
        return marks;
    }
    const std::string text = VisibleText(record);
    const std::string_view value =
        std::string_view(text).substr(std::min(text.size(), record.keyName.size() + 1));
    for (const TextPart& part : m_filter.MarksIn(record.keyName, FilterField::Name)) {
        marks.push_back({part.start, part.length});
    }
    const std::size_t before = Utf16Length(record.keyName) + 1;
    for (const TextPart& part : m_filter.MarksIn(value, FilterField::Value)) {
        marks.push_back({before + part.start, part.length});
    }
    return marks;
}

void KeyListView::OnRowSelected(int row) {
    const auto at = static_cast<std::size_t>(row);
    // When the program itself has changed the current key, there is nothing to report.
    if (at < m_selection.Rows().Keys().Size() &&
        m_selection.Rows().Keys().KeyAt(at) != m_selection.Rows().CurrentKey()) {
        OnSelectionChanged();
    }
}

void KeyListView::OnSelectionChanged() {
    const std::vector<int> selected = ListView1.SelectedRows();
    const std::vector<std::size_t> rows(selected.begin(), selected.end());
    const auto current = static_cast<std::size_t>(ListView1.SelectedRow());
    const std::size_t count = m_selection.Rows().Keys().Size();
    const bool isNew = rows.size() != 1 || m_selection.Rows().SelectedKeys().size() != 1 ||
                       m_selection.Rows().CurrentRow() != current;
    if (isNew && current < count && !rows.empty() && rows.back() < count) {
        m_selection.Rows().SelectRows(rows, current);
    }
}

void KeyListView::OnListMenu(POINT at) {
    m_actions.ShowPopup(PopupMenu::KeyList, at);
}

void KeyListView::OnTitleMenu(POINT at) {
    m_actions.ShowPopup(PopupMenu::Columns, at);
}

void KeyListView::OnRowActivated() {
    m_actions.Execute(Command::EditValue);
}

// F4 opens the choices, Space switches a key that is on or off. Shortcuts that belong to the list,
// such as Del, work here and nowhere else.
bool KeyListView::OnListKey(WPARAM key) {
    const bool isPlain = !IsKeyDown(VK_CONTROL) && !IsKeyDown(VK_SHIFT);
    if (isPlain && key == VK_ESCAPE && m_filter.IsOn()) {
        m_filter.RememberText();
        m_filter.Clear();
        return true;
    }
    if (isPlain && key == VK_F4) {
        m_actions.OpenChoices();
        return true;
    }
    if (isPlain && key == VK_SPACE && m_editing.IsSwitch()) {
        if (m_editing.ToggleSwitch()) {
            ContinueWithNextKey();
        }
        return true;
    }
    for (const CommandInfo& info : AllCommands()) {
        const Shortcut& shortcut = info.shortcut;
        if (shortcut.isOfKeyList && shortcut.key == key &&
            shortcut.control == IsKeyDown(VK_CONTROL) && shortcut.shift == IsKeyDown(VK_SHIFT)) {
            m_actions.Execute(info.command);
            return true;
        }
    }
    return false;
}

void KeyListView::OnListPlaced() {
    txtInplaceEdit.FollowList();
    PlaceColorSample();
    PlaceNote();
}

}  // namespace tamarind
