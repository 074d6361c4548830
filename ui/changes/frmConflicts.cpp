#include "ui/changes/frmConflicts.h"

#include <cstdint>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::uint16_t kConflictTexts[] = {4044, 4035, 4036};
constexpr int kConflictKey = 0;
constexpr int kConflictTheirs = 2;
constexpr wchar_t kMark[] = L"\u2713 ";  // a check mark, in front of the value that stays
constexpr wchar_t kPlainMark[] = L"\u221A ";

constexpr Anchor kConflictAnchors[] = {
    {IDC_CONFLICTS_LBLEXPLANATION, 0, 0, 100, 0},
    {IDC_CONFLICTS_LSTCONFLICTS, 0, 0, 100, 100},
    {IDC_CONFLICTS_OPTMINE, 0, 100, 0, 100},
    {IDC_CONFLICTS_OPTTHEIRS, 0, 100, 0, 100},
    {IDC_CONFLICTS_CMDKEEPALL, 0, 100, 0, 100},
    {IDC_CONFLICTS_CMDTAKEALL, 0, 100, 0, 100},
    {IDOK, 100, 100, 100, 100},
    {IDCANCEL, 100, 100, 100, 100},
};

// Color alone must not tell which value stays, so it has a mark. The check mark comes from a
// symbol font, which not every system has; the other mark is in all fonts.
const wchar_t* MarkOfThisSystem() {
    return HasFont(L"Segoe UI Symbol") ? kMark : kPlainMark;
}

}  // namespace

frmConflicts::frmConflicts(const DialogStyle& style)
    : ResizableDialog(IDD_FRMCONFLICTS, L"frmConflicts", style, kConflictAnchors), m_style(style) {}

bool frmConflicts::Show(HWND owner, std::vector<ValueConflict>& conflicts) {
    m_conflicts = conflicts;
    for (ValueConflict& conflict : m_conflicts) {
        conflict.takesTheirs = false;
    }
    if (ShowModal(owner) != IDOK) {
        return false;
    }
    conflicts = m_conflicts;
    return true;
}

void frmConflicts::OnInit() {
    m_mark = MarkOfThisSystem();
    ReportRows rows;
    rows.text = [this](int row, int column) { return CellText(row, column); };
    rows.tone = [this](int row, int column) {
        return IsPale(row, column) ? CellTone::Pale : CellTone::Normal;
    };
    rows.onSelected = [this](int) { ShowChoices(); };
    rows.onToggled = [this](int row) { OnToggled(row); };
    lstConflicts.Attach(Handle(), IDC_CONFLICTS_LSTCONFLICTS,
                        TextColumns(m_style.text, kConflictTexts), std::move(rows));
    lstConflicts.SetRowCount(static_cast<int>(m_conflicts.size()));
    lstConflicts.SelectRow(0);
    CenterForm(Handle());
}

std::optional<LRESULT> frmConflicts::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED) {
                OnCommand(LOWORD(wParam));
            }
            return 0;
        default:
            return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
}

void frmConflicts::OnCommand(int id) {
    switch (id) {
        case IDC_CONFLICTS_OPTMINE:
        case IDC_CONFLICTS_OPTTHEIRS:
            OnOption();
            break;
        case IDC_CONFLICTS_CMDKEEPALL:
            ChooseForAll(false);
            break;
        case IDC_CONFLICTS_CMDTAKEALL:
            ChooseForAll(true);
            break;
        case IDOK:
        case IDCANCEL:
            EndModal(id);
            break;
        default:
            break;
    }
}

// Windows reports a click also when an option only gets the focus. Choosing the same again does no
// harm.
void frmConflicts::OnOption() {
    if (lstConflicts.SelectedRow() != ReportList::kNoRow) {
        Choose(lstConflicts.SelectedRow(), optTheirs.IsChecked());
    }
}

void frmConflicts::OnToggled(int row) {
    Choose(row, !m_conflicts[static_cast<std::size_t>(row)].takesTheirs);
}

void frmConflicts::Choose(int row, bool takesTheirs) {
    m_conflicts[static_cast<std::size_t>(row)].takesTheirs = takesTheirs;
    ShowChoices();
}

void frmConflicts::ChooseForAll(bool takesTheirs) {
    for (ValueConflict& conflict : m_conflicts) {
        conflict.takesTheirs = takesTheirs;
    }
    ShowChoices();
}

void frmConflicts::ShowChoices() {
    lstConflicts.Redraw();
    const int row = lstConflicts.SelectedRow();
    const bool isSelected = row != ReportList::kNoRow;
    const bool takesTheirs = isSelected && m_conflicts[static_cast<std::size_t>(row)].takesTheirs;
    optMine.SetChecked(isSelected && !takesTheirs);
    optTheirs.SetChecked(takesTheirs);
    optMine.Enable(isSelected);
    optTheirs.Enable(isSelected);
}

std::wstring frmConflicts::CellText(int row, int column) const {
    const ValueConflict& conflict = m_conflicts[static_cast<std::size_t>(row)];
    if (column == kConflictKey) {
        return Widen(conflict.key);
    }
    const std::string& line = column == kConflictTheirs ? conflict.theirs : conflict.mine;
    return (IsPale(row, column) ? L"" : m_mark) +
           (line.empty() ? ReportList::kNothing : Widen(line));
}

bool frmConflicts::IsPale(int row, int column) const {
    return column != kConflictKey &&
           (column == kConflictTheirs) != m_conflicts[static_cast<std::size_t>(row)].takesTheirs;
}

}  // namespace tamarind
