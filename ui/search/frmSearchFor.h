#pragma once

#include "model/session/KeySelection.h"
#include "ui/search/SearchIds.h"
#include "ui/toolkit/DialogControl.h"

namespace tamarind {

// The small window in which the user says what to look for. Once made, it lives as long as its
// owner; closing it only hides it. The settings themselves are in KeySearch.
class frmSearchFor final : public Dialog {
public:
    frmSearchFor(const Workplace& workplace, KeySelection& selection, const DialogStyle& style)
        : Dialog(IDD_FRMSEARCHFOR, L"frmSearchFor", style),
          m_workplace(workplace),
          m_selection(selection) {}

    // Shows the window. The next search starts at the first key.
    void Open(HWND owner);

    // One step of the search with the present settings, whether the window is visible or not.
    void FindNextString(HWND owner);

    // Selects the whole text, so that typing replaces it.
    void PreSelectText() const { txtFind.SelectText(); }

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnActivate();
    void OnCommand(int id, int code);
    void OnTextChanged();

    const Workplace& m_workplace;
    KeySelection& m_selection;
    DialogControl txtFind{*this, IDC_SEARCHFOR_TXTFIND};
    DialogControl optKeyName{*this, IDC_SEARCHFOR_OPTKEYNAME};
    DialogControl optKeyDescription{*this, IDC_SEARCHFOR_OPTKEYDESCRIPTION};
    DialogControl chkWholeWord{*this, IDC_SEARCHFOR_CHKWHOLEWORD};
    DialogControl cmdFindNext{*this, IDC_SEARCHFOR_CMDFINDNEXT};
};

}  // namespace tamarind
