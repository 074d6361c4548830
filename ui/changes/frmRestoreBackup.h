#pragma once

#include <string>
#include <vector>

#include "model/session/OpenSettings.h"
#include "ui/changes/ChangesIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// Shows the backups of the open files and the keys in which each differs from its file as it is
// now, and restores one of them.
class frmRestoreBackup final : public ResizableDialog {
public:
    // Both arguments are kept by reference and must outlive the window.
    frmRestoreBackup(OpenSettings& settings, const DialogStyle& style);

    // Returns when a backup was restored or the user has closed the window.
    void Show(HWND owner) { ShowModal(owner); }

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id, int code);
    void OnBackupSelected(int row);
    void OnRestore();

    void MakeLists();
    void FillFiles();
    void ShowBackups();
    // The path of the file that is chosen in the combo box.
    const std::string& File() const;
    std::wstring BackupText(int row, int column) const;
    std::wstring DifferenceText(int row, int column) const;

    OpenSettings& m_settings;
    const DialogStyle& m_style;
    std::vector<std::string> m_files;
    std::vector<BackupInfo> m_backups;  // of the chosen file
    std::vector<BackupDifference> m_differences;
    ReportList lstBackups;
    ReportList lstDifferences;
    DialogControl cboFile{*this, IDC_RESTORE_CBOFILE};
    DialogControl txtPath{*this, IDC_RESTORE_TXTPATH};
    DialogControl lblNoBackups{*this, IDC_RESTORE_LBLNOBACKUPS};
    DialogControl cmdRestore{*this, IDOK};
};

}  // namespace tamarind
