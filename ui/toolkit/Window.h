#pragma once

#include <windows.h>

#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// What a window is created with. The class is registered at its first use.
struct WindowParams {
    const wchar_t* className = nullptr;
    const wchar_t* text = L"";
    DWORD style = 0;
    DWORD extendedStyle = 0;
    HWND parent = nullptr;
    int id = 0;     // of a child
    RECT bounds{};  // in pixels
    HICON icon = nullptr;
    HICON smallIcon = nullptr;
    LPCWSTR cursor = IDC_ARROW;
};

// A window with a class of its own. The object owns the window: it is destroyed with it.
class Window : public WindowObject {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // Null before it is created and after Windows destroyed it.
    HWND Handle() const { return m_window; }

protected:
    Window() = default;
    virtual ~Window();

    // Returns false when Windows could not create the window, or OnCreate of the class refused.
    bool CreateHandle(const WindowParams& params);

    // One switch over the messages; what it does not handle goes to the base class.
    virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static bool Register(const WindowParams& params);

    HWND m_window = nullptr;
};

}  // namespace tamarind
