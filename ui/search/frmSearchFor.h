#pragma once

#include <functional>
#include <utility>

#include "model/session/KeyFinding.h"
#include "ui/search/SearchIds.h"
#include "ui/toolkit/DialogControl.h"

namespace tamarind {

// The small window in which the user says what to look for. Once made, it lives as long as its
// owner; closing it only hides it. The settings themselves are in KeySearch.
class frmSearchFor final : public Dialog {
public:
    // `onFound` is called when the window is closed after a hit; it is to give the focus to the
    // found key.
    frmSearchFor(const Workplace& workplace, KeyFinding& finding, const DialogStyle& style,
                 std::function<void()> onFound)
        : Dialog(IDD_FRMSEARCHFOR, L"frmSearchFor", style),
          m_workplace(workplace),
          m_finding(finding),
          m_onFound(std::move(onFound)) {}

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
    KeyFinding& m_finding;
    std::function<void()> m_onFound;
    bool m_hasFound = false;  // since it was opened
    DialogControl txtFind{*this, IDC_SEARCHFOR_TXTFIND};
    DialogControl optKeyName{*this, IDC_SEARCHFOR_OPTKEYNAME};
    DialogControl optKeyDescription{*this, IDC_SEARCHFOR_OPTKEYDESCRIPTION};
    DialogControl chkWholeWord{*this, IDC_SEARCHFOR_CHKWHOLEWORD};
    DialogControl cmdFindNext{*this, IDC_SEARCHFOR_CMDFINDNEXT};
};

}  // namespace tamarind
