#include "ui/toolkit/DialogPanel.h"

#include "ui/toolkit/ControlKind.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr DWORD kUseTabTexture = 6;  // ETDT_ENABLETAB

// Themes draw the pages of tabs in another color than dialogs (Microsoft:
// EnableThemeDialogTexture).
void UseTabBackground(HWND panel) {
    const auto enable =
        LateFunction<HRESULT(WINAPI*)(HWND, DWORD)>(L"uxtheme.dll", "EnableThemeDialogTexture");
    if (enable != nullptr) {
        enable(panel, kUseTabTexture);
    }
}

bool IsDisabledTextBox(HWND control) {
    return KindOf(control) == ControlKind::TextBox && !IsWindowEnabled(control);
}

}  // namespace

void DialogPanel::OnInit() {
    UseTabBackground(Handle());
    Show(false);
}

void DialogPanel::OnStretched(int clientWidth) {
    m_width = clientWidth;
}

void DialogPanel::SetBounds(const RECT& bounds) {
    StretchTo(static_cast<int>(bounds.right - bounds.left));
    SetWindowBounds(Handle(), {bounds.left, bounds.top, bounds.left + m_width, bounds.bottom});
}

// The access keys of a hidden window work as long as it is enabled, so it is disabled as well.
void DialogPanel::Show(bool isShown) const {
    EnableWindow(Handle(), isShown);
    SetWindowPos(
        Handle(), HWND_TOP, 0, 0, 0, 0,
        SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | (isShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void DialogPanel::FocusFirst() const {
    const HWND first = GetNextDlgTabItem(Handle(), nullptr, FALSE);
    SendMessageW(GetAncestor(Handle(), GA_ROOT), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first),
                 TRUE);
}

std::optional<LRESULT> DialogPanel::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return SendMessageW(GetParent(Handle()), message, wParam, lParam);
        case WM_CTLCOLORSTATIC:
            // On the background of a tab it would look as if it were enabled.
            if (IsDisabledTextBox(reinterpret_cast<HWND>(lParam))) {
                SetBkColor(reinterpret_cast<HDC>(wParam), PaletteColor(COLOR_BTNFACE));
                return reinterpret_cast<LRESULT>(PaletteBrush(COLOR_BTNFACE));
            }
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

}  // namespace tamarind
