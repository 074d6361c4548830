#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/session/PendingChanges.h"
#include "ui/changes/ChangesIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ReportList.h"
#include "ui/toolkit/ResizableDialog.h"

namespace tamarind {

// What the window of pending changes asks the main window for.
struct PendingChangesActions {
    std::function<void(KeyNumber key)> goTo;
    std::function<void()> save;
};

// Shows the changes that wait to be saved and the lines of the files that a save will change, and
// lets the user take changes back. It stays open beside the main window and follows every change.
class frmPendingChanges final : public ResizableDialog, private WorkplaceListener {
public:
    // References are kept and must outlive the window.
    frmPendingChanges(Workplace& workplace, PendingChanges& pending, const DialogStyle& style,
                      PendingChangesActions actions);
    ~frmPendingChanges() override { m_workplace.Watchers().Remove(*this); }

    // Shows the window, or brings it to the front.
    void Open(HWND owner);

    // Shows the present texts and direction of the language.
    void ApplyLanguage();

private:
    // A line of the lower list.
    struct Line {
        std::wstring text;
        CellTone tone = CellTone::Normal;
    };

    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommandsChanged() override;
    void OnCommand(int id);
    bool OnListKey(WPARAM key);
    void SetListFont();

    void Refresh();
    void MakeLines();
    void EnableButtons() const;
    void GoTo() const;
    std::vector<KeyNumber> SelectedKeys() const;
    std::vector<KeyNumber> AllKeys() const;
    void Select(const std::vector<KeyNumber>& keys);  // ascending
    std::wstring CellText(int row, int column) const;
    const PendingChange& ChangeAt(int row) const {
        return m_review.changes[static_cast<std::size_t>(row)];
    }
    const Line& LineAt(int row) const { return m_lines[static_cast<std::size_t>(row)]; }

    Workplace& m_workplace;
    PendingChanges& m_pending;
    const DialogStyle& m_style;
    PendingChangesActions m_actions;
    PendingChanges::Review m_review;
    std::vector<Line> m_lines;
    bool m_isRefreshPosted = false;
    ReportList lstChanges;
    ReportList lstLines;
    DialogControl cmdGoTo{*this, IDOK};
    DialogControl cmdDiscard{*this, IDC_PENDING_CMDDISCARD};
    DialogControl cmdDiscardAll{*this, IDC_PENDING_CMDDISCARDALL};
    DialogControl cmdSave{*this, IDC_PENDING_CMDSAVE};
};

}  // namespace tamarind
