#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Subclass.h"

namespace tamarind {

// How the edge of a control looks.
enum class BorderLook { None, Single, Sunken };

// A standard control in a parent window. What Windows tells the parent of the control comes to the
// control's own class. The parent destroys the window.
class Control : private MessageFilter {
public:
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    HWND Handle() const { return m_window; }

    // In pixels, relative to the parent's client area.
    void SetBounds(const RECT& bounds);
    void Show(bool isVisible);
    void Enable(bool isEnabled);
    void SetBorder(BorderLook border);
    // The control takes the font over.
    void SetFont(UniqueFont font);

protected:
    Control() = default;
    virtual ~Control() = default;

    bool CreateControl(const wchar_t* className, HWND parent, int id, DWORD style,
                       DWORD extendedStyle = 0);

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(m_window, message, wParam, lParam);
    }

    // What the parent is told; nothing lets it handle that itself.
    virtual std::optional<LRESULT> OnNotify(NMHDR& header);
    virtual std::optional<LRESULT> OnCommand(int id, int code);
    virtual std::optional<LRESULT> OnColors(HDC dc);
    // `at` is in screen coordinates; nothing when the keyboard asked for the menu.
    virtual std::optional<LRESULT> OnContextMenu(std::optional<POINT> at);
    // The control's own messages.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    std::optional<LRESULT> FilterMessage(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) override;
    std::optional<LRESULT> FilterParentMessage(UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
    UniqueFont m_font;
    Subclass m_own{*this};
    Subclass m_parent{*this};
};

}  // namespace tamarind
