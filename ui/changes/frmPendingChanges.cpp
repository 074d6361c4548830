#include "ui/changes/frmPendingChanges.h"

#include <algorithm>
#include <cstdint>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::uint16_t kPendingTexts[] = {text::kKey, text::kSection, text::kInTheFile,
                                           text::kWillBeWritten};
enum PendingColumn : int { kPendingKey, kPendingSection, kPendingFile, kPendingWritten };

// Posted by the window to itself: many changes in a row are shown once.
constexpr UINT kRefresh = WM_APP;

constexpr Anchor kPendingAnchors[] = {
    {IDC_PENDING_LSTCHANGES, 0, 0, 100, 50},   {IDC_PENDING_LBLLINES, 0, 50, 100, 50},
    {IDC_PENDING_LSTLINES, 0, 50, 100, 100},   {IDOK, 0, 100, 0, 100},
    {IDC_PENDING_CMDDISCARD, 0, 100, 0, 100},  {IDC_PENDING_CMDDISCARDALL, 0, 100, 0, 100},
    {IDC_PENDING_CMDSAVE, 100, 100, 100, 100}, {IDCANCEL, 100, 100, 100, 100},
};

// The sign in front of a line says what color alone must not.
std::wstring TextOf(const PreviewLine& line) {
    switch (line.kind) {
        case PreviewLine::Kind::Removed:
            return L"- " + Widen(line.text);
        case PreviewLine::Kind::Added:
            return L"+ " + Widen(line.text);
        case PreviewLine::Kind::Skipped:
            return L"  \u2026";
        case PreviewLine::Kind::Same:
            break;
    }
    return L"  " + Widen(line.text);
}

CellTone ToneOf(PreviewLine::Kind kind) {
    switch (kind) {
        case PreviewLine::Kind::Removed:
            return CellTone::Removed;
        case PreviewLine::Kind::Added:
            return CellTone::Added;
        default:
            return CellTone::Normal;
    }
}

}  // namespace

frmPendingChanges::frmPendingChanges(Workplace& workplace, PendingChanges& pending,
                                     const DialogStyle& style, PendingChangesActions actions)
    : ResizableDialog(IDD_FRMPENDINGCHANGES, L"frmPendingChanges", style, kPendingAnchors),
      m_workplace(workplace),
      m_pending(pending),
      m_style(style),
      m_actions(std::move(actions)) {
    m_workplace.Watchers().Add(*this);
}

void frmPendingChanges::Open(HWND owner) {
    if (Handle() == nullptr && !Create(owner)) {
        return;
    }
    Refresh();
    ShowWindow(Handle(), SW_SHOW);
    SetActiveWindow(Handle());
    SetFocus(lstChanges.Handle());
}

void frmPendingChanges::ApplyLanguage() {
    if (Handle() != nullptr) {
        ResizableDialog::ApplyLanguage();
        std::vector<std::wstring> titles;
        for (ReportColumn& column : TextColumns(m_style.text, kPendingTexts)) {
            titles.push_back(std::move(column.title));
        }
        lstChanges.SetTitles(std::move(titles));
        Refresh();
    }
}

void frmPendingChanges::OnInit() {
    ReportRows changes;
    changes.text = [this](int row, int column) { return CellText(row, column); };
    changes.tone = [this](int row, int column) {
        return column == kPendingWritten && ChangeAt(row).isAsInFile ? CellTone::Pale
                                                                     : CellTone::Normal;
    };
    changes.onSelected = [this](int) { EnableButtons(); };
    changes.onActivated = [this](int) { GoTo(); };
    changes.onKey = [this](WPARAM key) { return OnListKey(key); };
    lstChanges.Attach(Handle(), IDC_PENDING_LSTCHANGES, TextColumns(m_style.text, kPendingTexts),
                      std::move(changes));
    ReportRows lines;
    lines.text = [this](int row, int) { return LineAt(row).text; };
    lines.tone = [this](int row, int) { return LineAt(row).tone; };
    lstLines.Attach(Handle(), IDC_PENDING_LSTLINES, {{std::wstring()}}, std::move(lines));
    SetListFont();
    CenterForm(Handle());
}

void frmPendingChanges::SetListFont() {
    lstLines.SetFont(MakeFixedPitchFont(WindowDpi(Handle())));
}

std::optional<LRESULT> frmPendingChanges::HandleMessage(UINT message, WPARAM wParam,
                                                        LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED) {
                OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_DPICHANGED: {
            const auto result = ResizableDialog::HandleMessage(message, wParam, lParam);
            SetListFont();
            return result;
        }
        case kRefresh:
            m_isRefreshPosted = false;
            if (IsWindowVisible(Handle())) {
                Refresh();
            }
            return 0;
        default:
            return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
}

void frmPendingChanges::OnCommandsChanged() {
    if (Handle() != nullptr && IsWindowVisible(Handle()) && !m_isRefreshPosted) {
        m_isRefreshPosted = PostMessageW(Handle(), kRefresh, 0, 0) != FALSE;
    }
}

void frmPendingChanges::OnCommand(int id) {
    switch (id) {
        case IDOK:
            GoTo();
            break;
        case IDC_PENDING_CMDDISCARD:
            m_pending.Discard(SelectedKeys());
            break;
        case IDC_PENDING_CMDDISCARDALL:
            m_pending.Discard(AllKeys());
            break;
        case IDC_PENDING_CMDSAVE:
            m_actions.save();
            break;
        case IDCANCEL:
            ShowWindow(Handle(), SW_HIDE);
            break;
        default:
            break;
    }
}

bool frmPendingChanges::OnListKey(WPARAM key) {
    if (key == VK_DELETE) {
        m_pending.Discard(SelectedKeys());
        return true;
    }
    if (key == 'A' && IsKeyDown(VK_CONTROL)) {
        lstChanges.SelectAll();
        return true;
    }
    return false;
}

void frmPendingChanges::GoTo() const {
    if (lstChanges.SelectedRow() != ReportList::kNoRow) {
        m_actions.goTo(ChangeAt(lstChanges.SelectedRow()).key);
    }
}

// While the rows change, the lists are empty.
void frmPendingChanges::Refresh() {
    const std::vector<KeyNumber> selected = SelectedKeys();
    const int row = lstChanges.SelectedRow();
    lstChanges.SetRowCount(0);
    lstLines.SetRowCount(0);
    m_review = m_pending.Look();
    MakeLines();
    lstChanges.SetRowCount(static_cast<int>(m_review.changes.size()));
    lstLines.SetRowCount(static_cast<int>(m_lines.size()));
    Select(selected);
    const int last = lstChanges.RowCount() - 1;
    if (lstChanges.SelectedRow() == ReportList::kNoRow && last >= 0) {
        lstChanges.SelectRow(std::clamp(row, 0, last));
    }
    EnableButtons();
}

void frmPendingChanges::Select(const std::vector<KeyNumber>& keys) {
    for (std::size_t row = 0; row < m_review.changes.size(); ++row) {
        if (std::ranges::binary_search(keys, m_review.changes[row].key)) {
            lstChanges.AlsoSelectRow(static_cast<int>(row));
        }
    }
}

void frmPendingChanges::MakeLines() {
    m_lines.clear();
    for (const FilePreview& file : m_review.files) {
        m_lines.push_back({Widen(file.path), CellTone::Heading});
        if (file.refusedKey) {
            m_lines.push_back({Widen(m_pending.RefusalBy(file)), CellTone::Normal});
        }
        for (const PreviewLine& line : file.lines) {
            m_lines.push_back({TextOf(line), ToneOf(line.kind)});
        }
        if (!file.refusedKey && file.lines.empty()) {
            m_lines.push_back({L"  " + m_style.text(text::kAsInFile), CellTone::Normal});
        }
    }
    if (m_lines.empty()) {
        m_lines.push_back({m_style.text(text::kNothingPending), CellTone::Normal});
    }
}

void frmPendingChanges::EnableButtons() const {
    const bool hasRow = lstChanges.SelectedRow() != ReportList::kNoRow;
    const bool hasRows = !m_review.changes.empty();
    cmdGoTo.Enable(hasRow);
    cmdDiscard.Enable(hasRow);
    cmdDiscardAll.Enable(hasRows);
    cmdSave.Enable(hasRows);
}

std::vector<KeyNumber> frmPendingChanges::SelectedKeys() const {
    std::vector<KeyNumber> keys;
    for (const int row : lstChanges.SelectedRows()) {
        keys.push_back(ChangeAt(row).key);
    }
    return keys;
}

std::vector<KeyNumber> frmPendingChanges::AllKeys() const {
    std::vector<KeyNumber> keys;
    for (const PendingChange& change : m_review.changes) {
        keys.push_back(change.key);
    }
    return keys;
}

std::wstring frmPendingChanges::CellText(int row, int column) const {
    const PendingChange& change = ChangeAt(row);
    switch (column) {
        case kPendingKey:
            return Widen(change.name);
        case kPendingSection:
            return Widen(change.section);
        case kPendingFile:
            return change.inFile.empty() ? ReportList::kNothing : Widen(change.inFile);
        default:
            break;
    }
    if (change.isAsInFile) {
        return m_style.text(text::kAsInFile);
    }
    return change.written.empty() ? ReportList::kNothing : Widen(change.written);
}

}  // namespace tamarind
