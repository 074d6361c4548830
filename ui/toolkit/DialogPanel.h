#pragma once

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// A part of a dialog, such as the page of a tab, with a template and controls of its own: a child
// dialog without a frame (WS_CHILD, DS_CONTROL, WS_EX_CONTROLPARENT). Its commands are sent to the
// dialog that it is in.
class DialogPanel final : public Dialog {
public:
    // As Dialog.
    DialogPanel(int templateId, const wchar_t* className, const DialogStyle& style)
        : Dialog(templateId, className, style) {}

    // Makes the panel, hidden. False if it cannot be made.
    using Dialog::Create;

    // The width in pixels that it needs for its texts.
    int Width() const { return m_width; }
    // In pixels of the dialog's client area. The panel is never narrower than its texts need it.
    void SetBounds(const RECT& bounds);
    // Brings the panel to the front, or hides it and disables its access keys.
    void Show(bool isShown) const;
    // Gives its first control the focus.
    void FocusFirst() const;

private:
    void OnInit() override;
    void OnStretched(int clientWidth) override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    int m_width = 0;
};

}  // namespace tamarind
