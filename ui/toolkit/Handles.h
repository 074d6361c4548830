#pragma once

#include <windows.h>

#include <commctrl.h>

#include "core/system/UniqueHandle_win32.h"

namespace tamarind {

// For handles of which null means none.
template <typename Handle, auto CloseFunction>
struct NullHandlePolicy {
    using Type = Handle;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { CloseFunction(handle); }
};

using UniqueFont = UniqueHandle<NullHandlePolicy<HFONT, DeleteObject>>;
using UniqueBitmap = UniqueHandle<NullHandlePolicy<HBITMAP, DeleteObject>>;
using UniqueBrush = UniqueHandle<NullHandlePolicy<HBRUSH, DeleteObject>>;
using UniqueImageList = UniqueHandle<NullHandlePolicy<HIMAGELIST, ImageList_Destroy>>;
using UniqueIcon = UniqueHandle<NullHandlePolicy<HICON, DestroyIcon>>;
using UniqueMenu = UniqueHandle<NullHandlePolicy<HMENU, DestroyMenu>>;
using UniqueHook = UniqueHandle<NullHandlePolicy<HHOOK, UnhookWindowsHookEx>>;
using UniqueAccelerators = UniqueHandle<NullHandlePolicy<HACCEL, DestroyAcceleratorTable>>;

// The device context of a window, or of the screen, for measuring. Released by the destructor.
class ScreenDC {
public:
    explicit ScreenDC(HWND window = nullptr) : m_window(window), m_dc(GetDC(window)) {}
    ~ScreenDC() { ReleaseDC(m_window, m_dc); }
    ScreenDC(const ScreenDC&) = delete;
    ScreenDC& operator=(const ScreenDC&) = delete;

    HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// Keeps an object selected in a device context until the end of the scope.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_former(SelectObject(dc, object)) {}
    ~SelectedObject() { SelectObject(m_dc, m_former); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

}  // namespace tamarind
