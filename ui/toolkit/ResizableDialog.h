#pragma once

#include <span>
#include <vector>

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// How the edges of a control follow a dialog's size: the share of each, in percent, in what the
// dialog is larger than its template and texts need it.
struct Anchor {
    int id;
    int left;
    int top;
    int right;
    int bottom;
};

// A dialog that the user can make larger. Controls without an anchor stay at the upper left.
class ResizableDialog : public Dialog {
protected:
    // All arguments outlive the dialog.
    ResizableDialog(int templateId, const wchar_t* className, const DialogStyle& style,
                    std::span<const Anchor> anchors)
        : Dialog(templateId, className, style), m_anchors(anchors) {}

    // For all messages that the dialog itself does not handle.
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnStretched(int clientWidth) override;

private:
    void Layout() const;
    void SetLeastSize(MINMAXINFO& info) const;

    std::span<const Anchor> m_anchors;
    std::vector<RECT> m_places;  // of the controls with anchors, at the least size
    SIZE m_leastArea{};          // of the client area
    int m_dpi = 0;               // of the pixels that are kept here
};

}  // namespace tamarind
