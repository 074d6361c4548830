#pragma once

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// A part of a dialog with controls of its own: a dialog without a frame over a template of its own
// (WS_CHILD, DS_CONTROL, WS_EX_CONTROLPARENT). The dialog that it is in gets its commands.
class DialogPanel final : public Dialog {
public:
    // All arguments outlive the panel.
    DialogPanel(int templateId, const wchar_t* className, const DialogStyle& style)
        : Dialog(templateId, className, style) {}

    // Makes it out of sight; false when it can not be made.
    using Dialog::Create;

    // How wide it is with its texts, in pixels.
    int Width() const { return m_width; }
    // In pixels of the dialog's client area; not less wide than the texts need.
    void SetBounds(const RECT& bounds);
    // Brings it to the front, or out of sight, where none of its keys is left.
    void Show(bool isShown) const;
    // Gives the focus to its first control.
    void FocusFirst() const;

private:
    void OnInit() override;
    void OnStretched(int clientWidth) override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    int m_width = 0;
};

}  // namespace tamarind
