#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tamarind {

// What a screen reader is told of a window, where Windows itself would tell less. What is empty or
// 0 is left to Windows.
struct AccessibleInfo {
    std::wstring name;
    std::wstring value;
    std::wstring description;
    LONG role = 0;   // ROLE_SYSTEM_
    LONG state = 0;  // more of STATE_SYSTEM_
};

// The answer to WM_GETOBJECT of a window of ours whose WindowObject tells something of itself or of
// its parts: an IAccessible that asks it anew at each question, and Windows for all else. Nothing
// for other objects than the window's client area, and where the system has no oleacc.dll.
std::optional<LRESULT> AnswerGetObject(HWND window, WPARAM wParam, LPARAM lParam);

// Tells screen readers that the text of a window, or of a part of it by the number that Windows
// gives that part, is another one and to be read out.
void AnnounceText(HWND window, LONG part = CHILDID_SELF);

}  // namespace tamarind
