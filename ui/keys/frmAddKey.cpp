#include "ui/keys/frmAddKey.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

void AddToCombo(HWND combo, const std::string& text) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

// The text of the chosen entry is in the box only after the message that tells of the choice.
void TakeChoice(const DialogControl& combo) {
    const auto choice = SendMessageW(combo.Handle(), CB_GETCURSEL, 0, 0);
    const auto length = SendMessageW(combo.Handle(), CB_GETLBTEXTLEN, choice, 0);
    if (choice == CB_ERR || length == CB_ERR) {
        return;
    }
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(combo.Handle(), CB_GETLBTEXT, choice, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    combo.SetText(text);
}

}  // namespace

void frmAddKey::OnInit() {
    for (const std::string& section : m_adding.Sections()) {
        AddToCombo(cboSection.Handle(), section);
    }
    cboSection.SetText(Widen(m_adding.ProposedSection()));
    FillForms();
    ShowFault();
    CenterForm(Handle());
    cboName.Focus();
}

std::optional<LRESULT> frmAddKey::HandleMessage(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND) {
        return std::nullopt;
    }
    OnCommand(LOWORD(wParam), HIWORD(wParam));
    return 0;
}

void frmAddKey::OnCommand(int id, int code) {
    const bool isText = id == IDC_ADDKEY_CBOSECTION || id == IDC_ADDKEY_CBONAME;
    if (isText && (code == CBN_EDITCHANGE || code == CBN_SELCHANGE)) {
        if (code == CBN_SELCHANGE) {
            TakeChoice(id == IDC_ADDKEY_CBOSECTION ? cboSection : cboName);
        }
        if (id == IDC_ADDKEY_CBOSECTION) {
            FillForms();
        }
        ShowFault();
    } else if (id == IDOK && Fault().empty()) {
        // The Enter key arrives here even while the button is disabled.
        m_adding.Add(Narrow(cboSection.Text()), Narrow(cboName.Text()));
        EndModal(IDOK);
    } else if (id == IDCANCEL) {
        EndModal(IDCANCEL);
    }
}

// What is typed already stays.
void frmAddKey::FillForms() const {
    const std::wstring name = cboName.Text();
    SendMessageW(cboName.Handle(), CB_RESETCONTENT, 0, 0);
    for (const std::string& form : m_adding.FormsIn(Narrow(cboSection.Text()))) {
        AddToCombo(cboName.Handle(), form);
    }
    cboName.SetText(name);
}

std::string frmAddKey::Fault() const {
    return m_adding.FaultOf(Narrow(cboSection.Text()), Narrow(cboName.Text()));
}

void frmAddKey::ShowFault() const {
    const std::string fault = Fault();
    lblFault.SetText(Widen(fault));
    cmdOK.Enable(fault.empty());
}

}  // namespace tamarind
