#pragma once

#include <string>

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// A control from the template of a dialog. It looks its window up at each call and so may be a
// member that is made before the dialog's window.
class DialogControl {
public:
    DialogControl(const Dialog& dialog, int id) : m_dialog(dialog), m_id(id) {}

    HWND Handle() const { return GetDlgItem(m_dialog.Handle(), m_id); }

    std::wstring Text() const;
    void SetText(const std::wstring& text) const;
    // Selects the whole text of a text box.
    void SelectText() const;

    // For check boxes and option buttons. Setting a state does not send BN_CLICKED.
    bool IsChecked() const;
    void SetChecked(bool isChecked) const;

    // If a control is disabled while it has the focus, the next one gets it.
    void Enable(bool isEnabled) const;

    // Moves the focus here as the Tab key does: the text of a text box is selected.
    void Focus() const;

private:
    const Dialog& m_dialog;
    int m_id;
};

}  // namespace tamarind
