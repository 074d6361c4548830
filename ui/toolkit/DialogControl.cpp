#include "ui/toolkit/DialogControl.h"

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

std::wstring DialogControl::Text() const {
    return TextOfWindow(Handle());
}

void DialogControl::SetText(const std::wstring& text) const {
    SetWindowTextW(Handle(), text.c_str());
}

void DialogControl::SelectText() const {
    SendMessageW(Handle(), EM_SETSEL, 0, -1);
}

bool DialogControl::IsChecked() const {
    return SendMessageW(Handle(), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void DialogControl::SetChecked(bool isChecked) const {
    SendMessageW(Handle(), BM_SETCHECK, isChecked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void DialogControl::Enable(bool isEnabled) const {
    const HWND control = Handle();
    if (!isEnabled && GetFocus() == control) {
        SendMessageW(m_dialog.Handle(), WM_NEXTDLGCTL, FALSE, FALSE);
    }
    if ((IsWindowEnabled(control) != FALSE) != isEnabled) {
        EnableWindow(control, isEnabled);
    }
}

void DialogControl::Focus() const {
    SendMessageW(m_dialog.Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Handle()), TRUE);
}

}  // namespace tamarind
