#pragma once

#include <windows.h>

#include "ui/toolkit/WindowObject.h"

namespace tamarind {

// What a window is created with. Its class is registered on the first use.
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

// A window with a class of its own, named in WindowParams. The object owns the window: destroying
// the object destroys it. An exception in a handler is reported and does not leave the window
// procedure.
class Window : public WindowObject {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // Null before the window is created and after Windows has destroyed it.
    HWND Handle() const { return m_window; }

protected:
    Window() = default;
    virtual ~Window();

    // False if Windows cannot create the window, or the class refuses it in its answer to
    // WM_CREATE.
    bool CreateHandle(const WindowParams& params);

    // Handles a message. Derived classes have one switch in it and pass on what they do not handle.
    virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Classes are registered once; later calls use the class as it is.
    static bool Register(const WindowParams& params);

    HWND m_window = nullptr;
};

}  // namespace tamarind
