#pragma once

#include <functional>
#include <string>
#include <utility>

#include "ui/shell/SplitterLayout.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// Is told what the user does with the bar.
class SplitterBarListener {
public:
    virtual void OnBarDown(POINT at) = 0;  // in pixels of the bar
    // Only while the left button alone is pressed; `at` as above.
    virtual void OnBarMove(POINT at) = 0;
    virtual void OnBarUp() = 0;
    // The drag was interrupted. `goesBack`: by the Escape key, so that the bar is to return to its
    // place.
    virtual void OnBarCancel(bool goesBack) = 0;

protected:
    ~SplitterBarListener() = default;
};

// The bar between two panes. It has the sizing pointer and captures the mouse during a drag. The
// Escape key ends a drag whichever window has the focus: for that time it filters the messages of
// that window.
class SplitterBar final : public Window, private MessageFilter {
public:
    SplitterBar() = default;
    ~SplitterBar() override { SetFilter(m_focusWindow, nullptr); }

    bool Create(HWND parent, int id);
    // To be called before the user can reach the bar. `listener` must outlive it.
    void Attach(SplitterBarListener& listener, SplitDirection direction);
    // What a screen reader calls it.
    void SetName(std::function<std::wstring()> name) { m_name = std::move(name); }

private:
    std::optional<AccessibleInfo> Describe() const override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMouseDown(POINT at);
    void OnMouseMove(POINT at, WPARAM buttons);
    void OnMouseUp();
    void OnKey(WPARAM key);
    void Paint() const;
    void Cancel(bool goesBack);
    void EndDrag();

    SplitterBarListener* m_listener = nullptr;
    std::function<std::wstring()> m_name;
    LPCWSTR m_cursor = IDC_SIZEWE;
    bool m_isDragging = false;
    HWND m_focusWindow = nullptr;  // while dragging
};

}  // namespace tamarind
