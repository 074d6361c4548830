#pragma once

#include <vector>

#include "model/session/IgnoredLinesEditor.h"
#include "ui/keys/KeysIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// Shows the lines of the settings that Total Commander does not read, and removes them.
class frmIgnoredLines final : public ResizableDialog {
public:
    // Both arguments are kept by reference and must outlive the window.
    frmIgnoredLines(IgnoredLinesEditor& lines, const DialogStyle& style);

    // Returns whether the user went to a key.
    bool Show(HWND owner) { return ShowModal(owner) == IDOK; }

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id);
    void Fill(int row);
    void EnableButtons() const;
    const IgnoredLine* SelectedLine() const;
    std::wstring CellText(int row, int column) const;

    IgnoredLinesEditor& m_editor;
    const DialogStyle& m_style;
    std::vector<IgnoredLine> m_lines;
    ReportList lstLines;
    DialogControl lblNone{*this, IDC_IGNORED_LBLNONE};
    DialogControl cmdGoTo{*this, IDOK};
    DialogControl cmdDelete{*this, IDC_IGNORED_CMDDELETE};
    DialogControl cmdUndo{*this, IDC_IGNORED_CMDUNDO};
};

}  // namespace tamarind
