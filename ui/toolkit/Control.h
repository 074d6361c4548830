#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <utility>

#include "ui/toolkit/Handles.h"
#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// How the edge of a control looks.
enum class BorderLook { None, Single, Sunken };

// A standard control in a parent window. The notifications that Windows sends to the parent arrive
// in the class of the control itself (Reflect), so that all code of a control is in one place. The
// parent destroys the window; the object may live longer.
class Control : public WindowObject {
public:
    // Passes a message that a parent has got on to the control that it is about. Nothing if it is
    // not about a control of ours, or if that leaves it to the parent. Every Window and Dialog
    // calls it.
    static std::optional<LRESULT> Reflect(UINT message, WPARAM wParam, LPARAM lParam);

    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    HWND Handle() const { return m_window; }

    // In pixels of the parent's client area.
    void SetBounds(const RECT& bounds);
    void Show(bool isVisible);
    void Enable(bool isEnabled);
    // Changes the frame of the control only if it differs.
    void SetBorder(BorderLook border);
    // What a screen reader is told of the control. It is asked with the control's number, so that
    // one function can tell of all controls of a window.
    using Describer = std::function<AccessibleInfo(int id)>;
    void SetDescriber(Describer describer) { m_describer = std::move(describer); }
    // The same of its rows, nodes or buttons, by the numbers that Windows gives them.
    using ChildDescriber = std::function<std::optional<AccessibleInfo>(LONG child)>;
    void SetChildDescriber(ChildDescriber describer) { m_childDescriber = std::move(describer); }
    // The control owns the font from then on.
    void SetFont(UniqueFont font);
    // The same with a font that must outlive the control or be replaced first.
    void UseFont(HFONT font);

protected:
    Control() = default;
    virtual ~Control();

    // Shows each "&" in the tooltips of a list or tree as it is. `getToolTips` is the message that
    // gives the tooltip control.
    void ShowMarksInTips(UINT getToolTips) const;

    // False if Windows cannot create the control. It is made without a size.
    bool CreateControl(const wchar_t* className, HWND parent, int id, DWORD style,
                       DWORD extendedStyle = 0);
    // Takes over a control that the parent has already, such as one from a dialog's template.
    bool AttachControl(HWND parent, int id);

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(m_window, message, wParam, lParam);
    }

    // What the control itself does with a message, for an OnMessage that goes on after it.
    LRESULT CallOriginal(UINT message, WPARAM wParam, LPARAM lParam) const {
        return CallWindowProcW(m_original, m_window, message, wParam, lParam);
    }

    // What the parent is told about the control. Nothing leaves it to the parent.
    virtual std::optional<LRESULT> OnNotify(NMHDR& header);
    virtual std::optional<LRESULT> OnCommand(int id, int code);
    virtual std::optional<LRESULT> OnColors(HDC dc);
    virtual std::optional<LRESULT> OnDrawItem(const DRAWITEMSTRUCT& item);
    // `at` is in screen pixels; nothing if the keyboard asked for the menu.
    virtual std::optional<LRESULT> OnContextMenu(std::optional<POINT> at);
    // A message of the control itself. Nothing leaves it to Windows.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    Control* AsControl() final { return this; }
    std::optional<AccessibleInfo> Describe() const final;
    std::optional<AccessibleInfo> DescribeChild(LONG child) const final;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool Attach(HWND window);
    void Detach();

    HWND m_window = nullptr;
    WNDPROC m_original = nullptr;
    UniqueFont m_font;
    Describer m_describer;
    ChildDescriber m_childDescriber;
};

}  // namespace tamarind
