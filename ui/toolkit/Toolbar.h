#pragma once

#include <span>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Is told which button was pressed.
class ToolbarListener {
public:
    virtual void OnToolbarButton(int id) = 0;
    // The arrow beside a button was clicked; `button` is its place in screen pixels.
    virtual void OnToolbarDropDown(int id, const RECT& button) = 0;

protected:
    ~ToolbarListener() = default;
};

// A button to be added.
struct ToolButton {
    int id = 0;
    int picture = -1;  // for a separator: its width in pixels, or -1
    BYTE style = BTNS_BUTTON;
    // Shown as the tooltip and read by screen readers; the mark of an access key ("&") is left out.
    std::wstring text;
};

// A flat toolbar with pictures. Buttons are known by the ids of their commands.
class Toolbar final : public Control {
public:
    bool Create(HWND parent, int id, ToolbarListener& listener);

    // The lists must outlive the toolbar or be replaced first.
    void SetImages(HIMAGELIST images, HIMAGELIST disabledImages);
    // Adds buttons after those that are there already. Texts are copied.
    void AddButtons(std::span<const ToolButton> buttons);
    // Sets another text for a button that was added with one.
    void SetText(int id, const std::wstring& text);
    void SetEnabled(int id, bool isEnabled);
    // For buttons that can stay pressed (BTNS_CHECK, BTNS_CHECKGROUP).
    void SetPressed(int id, bool isPressed);

    // The size in pixels that the buttons need.
    SIZE IdealSize() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnCommand(int id, int code) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnKey(WPARAM key);
    // Makes the next enabled button in that direction the hot one.
    void MoveHotButton(int from, int step);
    void DropDown(int id);

    ToolbarListener* m_listener = nullptr;
};

}  // namespace tamarind
