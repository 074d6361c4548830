#pragma once

#include "model/session/KeyAdding.h"
#include "ui/keys/KeysIds.h"
#include "ui/toolkit/DialogControl.h"

namespace tamarind {

// Asks for the section and the name of a key that is to be added.
class frmAddKey final : public Dialog {
public:
    // Both arguments are kept by reference and must outlive the window.
    frmAddKey(KeyAdding& adding, const DialogStyle& style)
        : Dialog(IDD_FRMADDKEY, L"frmAddKey", style), m_adding(adding) {}

    // Returns whether the user has added one, which is shown then.
    bool Show(HWND owner) { return ShowModal(owner) == IDOK; }

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id, int code);
    void FillForms() const;
    // Shows why there can be no such key.
    void ShowFault() const;
    std::string Fault() const;

    KeyAdding& m_adding;
    DialogControl cboSection{*this, IDC_ADDKEY_CBOSECTION};
    DialogControl cboName{*this, IDC_ADDKEY_CBONAME};
    DialogControl lblFault{*this, IDC_ADDKEY_LBLFAULT};
    DialogControl cmdOK{*this, IDOK};
};

}  // namespace tamarind
