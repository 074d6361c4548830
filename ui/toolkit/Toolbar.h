#pragma once

#include <span>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

class ToolbarListener {
public:
    virtual void OnToolbarButton(int id) = 0;
    // The arrow beside a button was clicked; `button` is in screen coordinates.
    virtual void OnToolbarDropDown(int id, const RECT& button) = 0;

protected:
    ~ToolbarListener() = default;
};

struct ToolButton {
    int id = 0;
    int picture = -1;  // for a separator: its width in pixels, or -1
    BYTE style = BTNS_BUTTON;
    // What its tooltip says and a screen reader reads; the mark of the access key is left out.
    std::wstring text;
};

// A flat toolbar of pictures.
class Toolbar final : public Control {
public:
    bool Create(HWND parent, int id, ToolbarListener& listener);

    void SetImages(HIMAGELIST images, HIMAGELIST disabledImages);
    void AddButtons(std::span<const ToolButton> buttons);
    // Another text for a button that has one.
    void SetText(int id, const std::wstring& text);
    void SetEnabled(int id, bool isEnabled);
    void SetPressed(int id, bool isPressed);

    // What its buttons need, in pixels.
    SIZE IdealSize() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnCommand(int id, int code) override;

    ToolbarListener* m_listener = nullptr;
};

}  // namespace tamarind
