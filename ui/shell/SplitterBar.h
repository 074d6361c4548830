#pragma once

#include "ui/shell/SplitterLayout.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

class SplitterBarListener {
public:
    virtual void OnBarDown(POINT at) = 0;  // in pixels of the bar
    virtual void OnBarMove(POINT at) = 0;
    virtual void OnBarUp() = 0;
    // The drag ended in another way; the bar is to go back if the user asked for that.
    virtual void OnBarCancel(bool goesBack) = 0;

protected:
    ~SplitterBarListener() = default;
};

// The bar between two panes. It has the sizing pointer and catches the mouse during a drag, which
// the Escape key ends, whichever window has the focus.
class SplitterBar final : public Window, private MessageFilter {
public:
    SplitterBar() = default;
    ~SplitterBar() override { SetFilter(m_focusWindow, nullptr); }

    bool Create(HWND parent, int id);
    void Attach(SplitterBarListener& listener, SplitDirection direction);

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMouseDown(POINT at);
    void OnMouseMove(POINT at, WPARAM buttons);
    void OnMouseUp();
    void Cancel(bool goesBack);
    void EndDrag();

    SplitterBarListener* m_listener = nullptr;
    LPCWSTR m_cursor = IDC_SIZEWE;
    bool m_isDragging = false;
    HWND m_focusWindow = nullptr;  // while dragging
};

}  // namespace tamarind
