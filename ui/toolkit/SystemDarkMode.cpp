// Two functions of uxtheme are exported by numbers only, 133 (AllowDarkModeForWindow) and 135
// (SetPreferredAppMode). Microsoft does not document them, but without them no Win32 program gets
// dark scroll bars and menus. They have had these numbers and arguments since build 18362, which is
// asked for first; without them all the rest is dark just the same.

#include "ui/toolkit/SystemDarkMode.h"

#include <cwchar>
#include <string_view>

#include "ui/toolkit/LateFunction.h"

namespace tamarind {
namespace {

constexpr DWORD kUseImmersiveDarkMode = 20;  // DWMWA_USE_IMMERSIVE_DARK_MODE
constexpr int kForceDark = 2;
constexpr int kForceLight = 3;
constexpr DWORD kFirstBuild = 18362;

// GetVersionEx tells what the manifest says, RtlGetVersion what is there.
bool HasNumberedFunctions() {
    const auto getVersion =
        LateFunction<LONG(WINAPI*)(OSVERSIONINFOW*)>(L"ntdll.dll", "RtlGetVersion");
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return getVersion != nullptr && getVersion(&version) == 0 && version.dwMajorVersion >= 10 &&
           version.dwBuildNumber >= kFirstBuild;
}

template <typename Function>
Function NumberedFunction(WORD number) {
    static const bool isThere = HasNumberedFunctions();
    return isThere ? LateFunction<Function>(L"uxtheme.dll", MAKEINTRESOURCEA(number)) : nullptr;
}

bool IsClass(HWND window, std::wstring_view wanted) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return wanted == name;
}

}  // namespace

void UseSystemDarkMode(bool isDark) {
    if (const auto setMode = NumberedFunction<int(WINAPI*)(int)>(135)) {
        setMode(isDark ? kForceDark : kForceLight);
    }
}

void UseSystemDarkModeFor(HWND window, bool isDark) {
    if (const auto allow = NumberedFunction<BOOL(WINAPI*)(HWND, BOOL)>(133)) {
        allow(window, isDark);
    }
    if ((GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) == 0) {
        const BOOL value = isDark;
        if (const auto setAttribute =
                LateFunction<HRESULT(WINAPI*)(HWND, DWORD, const void*, DWORD)>(
                    L"dwmapi.dll", "DwmSetWindowAttribute")) {
            setAttribute(window, kUseImmersiveDarkMode, &value, sizeof(value));
        }
    } else if (IsClass(window, L"SysListView32") || IsClass(window, L"SysTreeView32") ||
               IsClass(window, L"Edit") || IsClass(window, L"ComboLBox")) {
        // Their scroll bars; what is in them has colors of its own.
        if (const auto setTheme =
                LateFunction<HRESULT(WINAPI*)(HWND, const wchar_t*, const wchar_t*)>(
                    L"uxtheme.dll", "SetWindowTheme")) {
            setTheme(window, isDark ? L"DarkMode_Explorer" : nullptr, nullptr);
        }
    }
}

}  // namespace tamarind
