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
// which value stays.
class frmConflicts final : public ResizableDialog {
public:
    // `language` outlives the window.
    explicit frmConflicts(const DialogStyle& style);

    // All keys start with the user's own value. False when he cancels: his choices are dropped.
    bool Show(HWND owner, std::vector<ValueConflict>& conflicts);

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id);
    void OnOption();
    void OnToggled(int row);

    std::wstring CellText(int row, int column) const;
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
