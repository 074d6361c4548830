#include "ui/changes/frmImportReview.h"

#include <algorithm>
#include <cstdint>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::uint16_t kImportTexts[] = {text::kKey, text::kNow, text::kAfter};
enum ImportColumn : int { kImportKey, kImportNow, kImportAfter };

constexpr Anchor kImportAnchors[] = {
    {IDC_IMPORT_LBLEXPLANATION, 0, 0, 100, 0},
    {IDC_IMPORT_LSTKEYS, 0, 0, 100, 100},
    {IDOK, 100, 100, 100, 100},
    {IDCANCEL, 100, 100, 100, 100},
};

std::wstring WithNumber(std::wstring text, std::size_t number) {
    const std::size_t at = text.find(L"%1");
    return at == std::wstring::npos ? text : text.replace(at, 2, std::to_wstring(number));
}

std::wstring LineText(const std::string& line) {
    return line.empty() ? ReportList::kNothing : Widen(line);
}

}  // namespace

frmImportReview::frmImportReview(const DialogStyle& style)
    : ResizableDialog(IDD_FRMIMPORTREVIEW, L"frmImportReview", style, kImportAnchors),
      m_style(style) {}

bool frmImportReview::Show(HWND owner, ImportReview& review) {
    m_review = review;
    MakeRows();
    if (ShowModal(owner) != IDOK) {
        return false;
    }
    review = m_review;
    return true;
}

// The keys to be set come before those to be commented out.
void frmImportReview::MakeRows() {
    const auto comments = std::ranges::find(m_review.rows, true, &ImportRow::commentsOut);
    const auto setCount = static_cast<std::size_t>(comments - m_review.rows.begin());
    AddGroup(0, setCount);
    AddGroup(setCount, m_review.rows.size() - setCount);
    if (m_review.missingCount > 0) {
        m_rows.push_back({Row::Kind::Missing, 0, 0});
    }
}

void frmImportReview::AddGroup(std::size_t first, std::size_t count) {
    if (count == 0) {
        return;
    }
    m_rows.push_back({Row::Kind::Heading, first, count});
    for (std::size_t row = first; row < first + count; ++row) {
        m_rows.push_back({Row::Kind::Key, row, 1});
    }
}

void frmImportReview::OnInit() {
    ReportRows rows;
    rows.text = [this](int row, int column) { return CellText(row, column); };
    rows.tone = [this](int row, int column) { return ToneOf(row, column); };
    rows.onToggled = [this](int row) { Toggle(row); };
    rows.isChecked = [this](int row) { return IsChecked(row); };
    lstKeys.Attach(Handle(), IDC_IMPORT_LSTKEYS, TextColumns(m_style.text, kImportTexts),
                   std::move(rows));
    lstKeys.SetRowCount(static_cast<int>(m_rows.size()));
    lstKeys.SelectRow(0);
    CenterForm(Handle());
}

std::optional<LRESULT> frmImportReview::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COMMAND) {
        return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
    const int id = LOWORD(wParam);
    if (HIWORD(wParam) == BN_CLICKED && (id == IDOK || id == IDCANCEL)) {
        EndModal(id);
    }
    return 0;
}

std::wstring frmImportReview::CellText(int row, int column) const {
    const Row& shown = RowAt(row);
    if (shown.kind != Row::Kind::Key) {
        return HeadingText(shown, column);
    }
    const ImportRow& key = m_review.rows[shown.first];
    switch (column) {
        case kImportNow:
            return LineText(key.now);
        case kImportAfter:
            return LineText(key.after);
        default:
            return Widen(key.key);
    }
}

std::wstring frmImportReview::HeadingText(const Row& row, int column) const {
    if (row.kind == Row::Kind::Missing) {
        return column == kImportKey
                   ? WithNumber(m_style.text(text::kNotInThisFile), m_review.missingCount)
               : column == kImportAfter ? m_style.text(text::kRemoveThemToo)
                                        : std::wstring();
    }
    const bool commentsOut = m_review.rows[row.first].commentsOut;
    return column == kImportKey
               ? WithNumber(m_style.text(commentsOut ? text::kImportComments : text::kImportSets),
                            row.count)
               : std::wstring();
}

// What the import leaves as it is, is pale.
CellTone frmImportReview::ToneOf(int row, int column) const {
    const Row& shown = RowAt(row);
    if (shown.kind != Row::Kind::Key) {
        return CellTone::Heading;
    }
    const ImportRow& key = m_review.rows[shown.first];
    return column == kImportAfter && key.now == key.after ? CellTone::Pale : CellTone::Normal;
}

bool frmImportReview::IsChecked(int row) const {
    const Row& shown = RowAt(row);
    if (shown.kind == Row::Kind::Missing) {
        return m_review.removesMissing;
    }
    const auto first = m_review.rows.begin() + static_cast<std::ptrdiff_t>(shown.first);
    return std::all_of(first, first + static_cast<std::ptrdiff_t>(shown.count),
                       [](const ImportRow& key) { return key.isTaken; });
}

void frmImportReview::Toggle(int row) {
    const Row& shown = RowAt(row);
    const bool isChecked = !IsChecked(row);
    if (shown.kind == Row::Kind::Missing) {
        m_review.removesMissing = isChecked;
    } else {
        for (std::size_t at = shown.first; at < shown.first + shown.count; ++at) {
            m_review.rows[at].isTaken = isChecked;
        }
    }
    lstKeys.Redraw();
}

}  // namespace tamarind
