#include "ui/changes/frmRestoreBackup.h"

#include <charconv>
#include <cstdint>
#include <string_view>

#include "core/files/Paths.h"
#include "core/text/WideText_win32.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr std::uint16_t kBackupTexts[] = {4024, 4025, 4026};
constexpr std::uint16_t kDifferenceTexts[] = {4044, 4028, 4029};
enum BackupColumn { kDate, kSize, kDifferingKeys };
enum DifferenceColumn { kKey, kInBackup, kNow };

constexpr Anchor kRestoreAnchors[] = {
    {IDC_RESTORE_TXTPATH, 0, 0, 100, 0},
    {IDC_RESTORE_LSTBACKUPS, 0, 0, 100, 40},
    {IDC_RESTORE_LBLNOBACKUPS, 0, 0, 100, 0},
    {IDC_RESTORE_LBLDIFFERENCES, 0, 40, 100, 40},
    {IDC_RESTORE_LSTDIFFERENCES, 0, 40, 100, 100},
    {IDOK, 100, 100, 100, 100},
    {IDCANCEL, 100, 100, 100, 100},
};

// The number in `length` characters from `start` on; 0 if there are none.
WORD NumberAt(std::string_view text, std::size_t start, std::size_t length) {
    WORD number = 0;
    if (start < text.size()) {
        const std::string_view digits = text.substr(start, length);
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    }
    return number;
}

// A date like "2026-11-21 06.45.12" in the format of the user's region.
std::wstring DateForUser(const std::string& date) {
    SYSTEMTIME time{};
    time.wYear = NumberAt(date, 0, 4);
    time.wMonth = NumberAt(date, 5, 2);
    time.wDay = NumberAt(date, 8, 2);
    time.wHour = NumberAt(date, 11, 2);
    time.wMinute = NumberAt(date, 14, 2);
    time.wSecond = NumberAt(date, 17, 2);
    wchar_t day[80] = L"";
    wchar_t clock[80] = L"";
    const bool isDate =
        GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, day,
                        ARRAYSIZE(day), nullptr) != 0 &&
        GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, clock, ARRAYSIZE(clock)) != 0;
    return isDate ? std::wstring(day) + L' ' + clock : Widen(date);
}

// A whole number with the thousands separators of the user's region.
std::wstring NumberForUser(std::uint64_t number) {
    wchar_t separator[8] = L"";
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_STHOUSAND, separator, ARRAYSIZE(separator));
    NUMBERFMTW format{};
    format.Grouping = 3;
    format.lpDecimalSep = separator;  // not shown
    format.lpThousandSep = separator;
    const std::wstring digits = std::to_wstring(number);
    wchar_t text[64] = L"";
    return GetNumberFormatEx(LOCALE_NAME_USER_DEFAULT, 0, digits.c_str(), &format, text,
                             ARRAYSIZE(text)) != 0
               ? text
               : digits;
}

}  // namespace

frmRestoreBackup::frmRestoreBackup(OpenSettings& settings, const DialogStyle& style)
    : ResizableDialog(IDD_FRMRESTOREBACKUP, L"frmRestoreBackup", style, kRestoreAnchors),
      m_settings(settings),
      m_style(style) {}

void frmRestoreBackup::OnInit() {
    MakeLists();
    FillFiles();
    ShowBackups();
    CenterForm(Handle());
    if (!m_backups.empty()) {
        SetFocus(lstBackups.Handle());
    }
}

void frmRestoreBackup::MakeLists() {
    std::vector<ReportColumn> columns = TextColumns(m_style.text, kBackupTexts);
    for (ReportColumn& column : columns) {
        column.isNumber = true;
    }
    ReportRows backups;
    backups.text = [this](int row, int column) { return BackupText(row, column); };
    backups.onSelected = [this](int row) { OnBackupSelected(row); };
    lstBackups.Attach(Handle(), IDC_RESTORE_LSTBACKUPS, columns, std::move(backups));
    ReportRows differences;
    differences.text = [this](int row, int column) { return DifferenceText(row, column); };
    lstDifferences.Attach(Handle(), IDC_RESTORE_LSTDIFFERENCES,
                          TextColumns(m_style.text, kDifferenceTexts), std::move(differences));
}

void frmRestoreBackup::FillFiles() {
    m_files = m_settings.BackedUpFiles();
    for (const std::string& file : m_files) {
        SendMessageW(cboFile.Handle(), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(Widen(FileNameOfPath(file)).c_str()));
    }
    SendMessageW(cboFile.Handle(), CB_SETCURSEL, 0, 0);
}

std::optional<LRESULT> frmRestoreBackup::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        default:
            return ResizableDialog::HandleMessage(message, wParam, lParam);
    }
}

void frmRestoreBackup::OnCommand(int id, int code) {
    if (id == IDC_RESTORE_CBOFILE && code == CBN_SELCHANGE) {
        ShowBackups();
    } else if (id == IDOK) {
        OnRestore();
    } else if (id == IDCANCEL) {
        EndModal(IDCANCEL);
    }
}

const std::string& frmRestoreBackup::File() const {
    return m_files.at(static_cast<std::size_t>(SendMessageW(cboFile.Handle(), CB_GETCURSEL, 0, 0)));
}

// Shows the backups of the chosen file, with the newest one selected.
void frmRestoreBackup::ShowBackups() {
    txtPath.SetText(Widen(File()));
    lstBackups.SetRowCount(0);
    m_backups = m_settings.Backups(File());
    lstBackups.SetRowCount(static_cast<int>(m_backups.size()));
    lstBackups.Show(!m_backups.empty());
    ShowWindow(lblNoBackups.Handle(), m_backups.empty() ? SW_SHOWNA : SW_HIDE);
    OnBackupSelected(ReportList::kNoRow);
    if (!m_backups.empty()) {
        lstBackups.SelectRow(0);
    }
}

// The list of differences is emptied before its texts change (see ReportList::SetRowCount).
void frmRestoreBackup::OnBackupSelected(int row) {
    const bool isSelected = row != ReportList::kNoRow;
    lstDifferences.SetRowCount(0);
    m_differences.clear();
    if (isSelected) {
        m_differences =
            m_settings.BackupDifferences(File(), m_backups[static_cast<std::size_t>(row)].path);
    }
    lstDifferences.SetRowCount(static_cast<int>(m_differences.size()));
    cmdRestore.Enable(isSelected);
}

void frmRestoreBackup::OnRestore() {
    const int row = lstBackups.SelectedRow();
    if (row != ReportList::kNoRow &&
        m_settings.RestoreBackup(File(), m_backups[static_cast<std::size_t>(row)].path)) {
        EndModal(IDOK);
    }
}

std::wstring frmRestoreBackup::BackupText(int row, int column) const {
    const BackupInfo& backup = m_backups[static_cast<std::size_t>(row)];
    switch (column) {
        case kDate:
            return DateForUser(backup.date);
        case kSize:
            return NumberForUser(backup.size);
        default:
            return NumberForUser(backup.differingKeys);
    }
}

std::wstring frmRestoreBackup::DifferenceText(int row, int column) const {
    const BackupDifference& difference = m_differences[static_cast<std::size_t>(row)];
    if (column == kKey) {
        return Widen(difference.key);
    }
    const std::string& line = column == kInBackup ? difference.inBackup : difference.now;
    return line.empty() ? ReportList::kNothing : Widen(line);
}

}  // namespace tamarind
