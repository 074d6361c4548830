#pragma once

#include <span>
#include <vector>

#include "ui/toolkit/Dialog.h"

namespace tamarind {

// How the edges of a control follow the size of the dialog: for each edge, the share in percent
// that it takes of what the dialog is larger than its smallest size. For example {id, 0, 0, 100,
// 100} grows in both directions, {id, 100, 100, 100, 100} stays at the lower right corner.
struct Anchor {
    int id;
    int left;
    int top;
    int right;
    int bottom;
};

// A dialog that the user can make larger. Controls without an anchor stay at the upper left. Its
// smallest size is that of its template, stretched for its texts.
class ResizableDialog : public Dialog {
protected:
    // All arguments are kept by reference and must outlive the dialog.
    ResizableDialog(int templateId, const wchar_t* className, const DialogStyle& style,
                    std::span<const Anchor> anchors)
        : Dialog(templateId, className, style), m_anchors(anchors) {}

    // Derived dialogs pass on all messages that they do not handle themselves.
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
