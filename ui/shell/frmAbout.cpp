#include "ui/shell/frmAbout.h"

#include <cstdint>
#include <utility>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Pictures.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kIconSize = 48;                 // pixels at 96 DPI
constexpr std::uint16_t kVersionText = 1503;  // the number of its text

}  // namespace

frmAbout::frmAbout(const DialogStyle& style, Program program, std::function<void()> showHelp)
    : Dialog(IDD_FRMABOUT, L"frmAbout", style),
      m_style(style),
      m_program(std::move(program)),
      m_showHelp(std::move(showHelp)) {}

void frmAbout::OnInit() {
    ShowIcon();
    ShowName();
    lblVersion.SetText(m_style.text(kVersionText) + L' ' + Widen(m_program.version));
    txtSettings.SetText(Widen(m_program.settingsPath));
    CenterForm(Handle());
}

void frmAbout::ShowIcon() {
    const int size = ScaledPixels(kIconSize, WindowDpi(Handle()));
    // Loaded at run time, because the import library of the common controls lacks this function.
    static const auto loadIcon =
        LateFunction<decltype(&LoadIconWithScaleDown)>(L"comctl32.dll", "LoadIconWithScaleDown");
    if (loadIcon != nullptr) {
        loadIcon(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kProgramIcon), size, size,
                 m_icon.Put());
    }
    SendMessageW(imgIcon.Handle(), STM_SETICON, reinterpret_cast<WPARAM>(m_icon.Get()), 0);
}

// In the font of the dialog, bold and half as large again.
void frmAbout::ShowName() {
    const HWND label = lblName.Handle();
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)), sizeof(font), &font);
    font.lfHeight = Scaled(static_cast<std::int32_t>(font.lfHeight), 3, 2);
    font.lfWeight = FW_BOLD;
    m_nameFont.Reset(CreateFontIndirectW(&font));
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(m_nameFont.Get()), FALSE);
    lblName.SetText(Widen(m_program.name));
}

std::optional<LRESULT> frmAbout::HandleMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam));
            return 0;
        default:
            return std::nullopt;
    }
}

void frmAbout::OnCommand(int id) {
    switch (id) {
        case IDC_ABOUT_CMDHELP:
            m_showHelp();
            break;
        case IDOK:
        case IDCANCEL:
            EndModal(id);
            break;
        default:
            break;
    }
}

}  // namespace tamarind
