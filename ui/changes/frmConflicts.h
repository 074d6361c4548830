#pragma once

#include <string>
#include <vector>

#include "model/program/UserPrompts.h"
#include "ui/changes/ChangesIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// Shows the keys that were changed here and by another program, and lets the user choose for each
// which value stays. It changes nothing itself: the caller gets the choices.
class frmConflicts final : public ResizableDialog {
public:
    // `style` is kept by reference and must outlive the window.
    explicit frmConflicts(const DialogStyle& style);

    // All keys start with the user's own value. On OK `conflicts` gets the choices (takesTheirs).
    // False if the user cancels; `conflicts` is then as it was.
    bool Show(HWND owner, std::vector<ValueConflict>& conflicts);

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id);
    void OnOption();
    void OnToggled(int row);

    // Column 0 is the key, 1 the user's line and 2 that of the other program.
    std::wstring CellText(int row, int column) const;
    // Whether a cell has the value that does not stay.
    bool IsPale(int row, int column) const;
    void Choose(int row, bool takesTheirs);
    void ChooseForAll(bool takesTheirs);
    void ShowChoices();

    const DialogStyle& m_style;
    std::vector<ValueConflict> m_conflicts;
    std::wstring m_mark;  // in front of the values that stay
    ReportList lstConflicts;
    DialogControl optMine{*this, IDC_CONFLICTS_OPTMINE};
    DialogControl optTheirs{*this, IDC_CONFLICTS_OPTTHEIRS};
};

}  // namespace tamarind
