#include "ui/keys/frmIgnoredLines.h"

#include <algorithm>
#include <cstdint>

#include "core/files/Paths.h"
#include "core/text/WideText_win32.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::uint16_t kColumnTexts[] = {4202, 4203, 4204};
enum Column : int { kNumberColumn, kTextColumn, kReasonColumn };

constexpr Anchor kIgnoredAnchors[] = {
    {IDC_IGNORED_LSTLINES, 0, 0, 100, 100},
    {IDC_IGNORED_LBLNONE, 0, 0, 100, 0},
    {IDOK, 0, 100, 0, 100},
    {IDC_IGNORED_CMDDELETE, 0, 100, 0, 100},
    {IDC_IGNORED_CMDUNDO, 0, 100, 0, 100},
    {IDCANCEL, 100, 100, 100, 100},
};

}  // namespace

frmIgnoredLines::frmIgnoredLines(IgnoredLinesEditor& lines, const DialogStyle& style)
    : ResizableDialog(IDD_FRMIGNOREDLINES, L"frmIgnoredLines", style, kIgnoredAnchors),
      m_editor(lines),
      m_style(style) {}

void frmIgnoredLines::OnInit() {
    std::vector<ReportColumn> columns = TextColumns(m_style.text, kColumnTexts);
    columns[kNumberColumn].isNumber = true;
    ReportRows rows;
    rows.text = [this](int row, int column) { return CellText(row, column); };
    rows.onSelected = [this](int) { EnableButtons(); };
    rows.onActivated = [this](int) { OnCommand(IDOK); };
    rows.onKey = [this](WPARAM key) {
        if (key == VK_DELETE) {
            OnCommand(IDC_IGNORED_CMDDELETE);
        }
        return key == VK_DELETE;
    };
    lstLines.Attach(Handle(), IDC_IGNORED_LSTLINES, columns, std::move(rows));
    Fill(0);
    CenterForm(Handle());
    SetFocus(m_lines.empty() ? GetDlgItem(Handle(), IDCANCEL) : lstLines.Handle());
}

std::optional<LRESULT> frmIgnoredLines::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COMMAND) {
        return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
    OnCommand(LOWORD(wParam));
    return 0;
}

void frmIgnoredLines::OnCommand(int id) {
    const IgnoredLine* const line = SelectedLine();
    const int row = lstLines.SelectedRow();
    if (id == IDOK && line != nullptr && m_editor.CanGoTo(*line)) {
        m_editor.GoTo(*line);
        EndModal(IDOK);
    } else if (id == IDC_IGNORED_CMDDELETE && line != nullptr) {
        m_editor.Delete(*line);
        Fill(row);
    } else if (id == IDC_IGNORED_CMDUNDO && m_editor.CanUndo()) {
        m_editor.Undo();
        Fill(std::max(row, 0));
    } else if (id == IDCANCEL) {
        EndModal(IDCANCEL);
    }
}

// Shows the lines as they are now, with one of them selected.
void frmIgnoredLines::Fill(int row) {
    lstLines.SetRowCount(0);
    m_lines = m_editor.Look();
    lstLines.SetRowCount(static_cast<int>(m_lines.size()));
    if (!m_lines.empty()) {
        lstLines.SelectRow(std::min(row, static_cast<int>(m_lines.size()) - 1));
    }
    lstLines.Show(!m_lines.empty());
    ShowWindow(lblNone.Handle(), m_lines.empty() ? SW_SHOWNA : SW_HIDE);
    EnableButtons();
}

void frmIgnoredLines::EnableButtons() const {
    const IgnoredLine* const line = SelectedLine();
    cmdGoTo.Enable(line != nullptr && m_editor.CanGoTo(*line));
    cmdDelete.Enable(line != nullptr);
    cmdUndo.Enable(m_editor.CanUndo());
}

const IgnoredLine* frmIgnoredLines::SelectedLine() const {
    const int row = lstLines.SelectedRow();
    return row == ReportList::kNoRow ? nullptr : &m_lines[static_cast<std::size_t>(row)];
}

std::wstring frmIgnoredLines::CellText(int row, int column) const {
    const IgnoredLine& line = m_lines[static_cast<std::size_t>(row)];
    switch (column) {
        case kNumberColumn: {
            // The first file is the settings file itself.
            const bool isMain = line.path == m_lines.front().path;
            const std::string file =
                isMain ? std::string() : std::string(FileNameOfPath(line.path)) + " ";
            return Widen(file + std::to_string(line.number));
        }
        case kTextColumn:
            return Widen(line.text);
        default:
            return Widen(m_editor.ReasonOf(line));
    }
}

}  // namespace tamarind
