#pragma once

#include <functional>
#include <string>

#include "ui/shell/ShellIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// Says what the program is, which version of it runs, and where it keeps its own settings.
class frmAbout final : public Dialog {
public:
    // What is said about the program.
    struct Program {
        std::string name;
        std::string version;
        std::string settingsPath;  // of the program's own settings
    };

    // `style` is kept by reference and must outlive the window. `showHelp` opens the help.
    frmAbout(const DialogStyle& style, Program program, std::function<void()> showHelp);

    // Returns when the user has closed the window.
    void Show(HWND owner) { ShowModal(owner); }

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id);
    void ShowIcon();
    void ShowName();

    const DialogStyle& m_style;
    Program m_program;
    std::function<void()> m_showHelp;
    UniqueIcon m_icon;
    UniqueFont m_nameFont;
    DialogControl imgIcon{*this, IDC_ABOUT_IMGICON};
    DialogControl lblName{*this, IDC_ABOUT_LBLNAME};
    DialogControl lblVersion{*this, IDC_ABOUT_LBLVERSION};
    DialogControl txtSettings{*this, IDC_ABOUT_TXTSETTINGS};
};

}  // namespace tamarind
