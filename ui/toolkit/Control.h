#pragma once

#include <windows.h>

#include <optional>

#include "ui/toolkit/Handles.h"
#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// How the edge of a control looks.
enum class BorderLook { None, Single, Sunken };

// A standard control in a parent window. What Windows tells the parent of the control comes to the
// control's own class. The parent destroys the window.
class Control : public WindowObject {
public:
    // Passes what a parent is told on to the control that it is about. Nothing: it is about none,
    // or the control leaves it to the parent. Every Window calls it.
    static std::optional<LRESULT> Reflect(UINT message, WPARAM wParam, LPARAM lParam);

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
    virtual ~Control();

    // Lets the tips of a list or tree, which the message gives, show each "&" of a row.
    void ShowMarksInTips(UINT getToolTips) const;

    bool CreateControl(const wchar_t* className, HWND parent, int id, DWORD style,
                       DWORD extendedStyle = 0);
    // Takes over a control that the parent has already, such as one of a dialog's template.
    bool AttachControl(HWND parent, int id);

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(m_window, message, wParam, lParam);
    }

    // What the parent is told; nothing lets it handle that itself.
    virtual std::optional<LRESULT> OnNotify(NMHDR& header);
    virtual std::optional<LRESULT> OnCommand(int id, int code);
    virtual std::optional<LRESULT> OnColors(HDC dc);
    virtual std::optional<LRESULT> OnDrawItem(const DRAWITEMSTRUCT& item);
    // `at` is in screen coordinates; nothing when the keyboard asked for the menu.
    virtual std::optional<LRESULT> OnContextMenu(std::optional<POINT> at);
    // The control's own messages.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    Control* AsControl() final { return this; }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool Attach(HWND window);
    void Detach();

    HWND m_window = nullptr;
    WNDPROC m_original = nullptr;
    UniqueFont m_font;
};

}  // namespace tamarind
