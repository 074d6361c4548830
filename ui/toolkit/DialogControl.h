#pragma once

#include <string>

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// A control that a dialog has from its template.
class DialogControl {
public:
    DialogControl(const Dialog& dialog, int id) : m_dialog(dialog), m_id(id) {}

    HWND Handle() const { return GetDlgItem(m_dialog.Handle(), m_id); }

    std::wstring Text() const;
    void SetText(const std::wstring& text) const;
    // Selects the whole text of a text box.
    void SelectText() const;

    bool IsChecked() const;
    void SetChecked(bool isChecked) const;

    // A control that is disabled while it has the focus passes it on to the next one.
    void Enable(bool isEnabled) const;

    // As the user does it with the Tab key.
    void Focus() const;

private:
    const Dialog& m_dialog;
    int m_id;
};

}  // namespace tamarind
