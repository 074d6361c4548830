#pragma once

#include <array>

#include "model/program/OptionsEditor.h"
#include "ui/shell/ShellIds.h"
#include "ui/toolkit/ColorButton.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/DialogPanel.h"
#include "ui/toolkit/TabStrip.h"

namespace tamarind {

// The window of the program's own settings, with panels for the look, for habits and for the
// language. OptionsEditor keeps what is chosen; this class only shows it.
class frmOptions final : public Dialog, private TabStripListener {
public:
    // Both arguments are kept by reference and must outlive the window.
    frmOptions(OptionsEditor& options, const DialogStyle& style);

    // Returns when the user has closed the window.
    void Show(HWND owner);

private:
    enum Panel { kLayout, kOperation, kLanguage };
    // A check box and the choice that it stands for.
    struct FlagBox {
        int id;
        DialogControl frmOptions::*box;
        bool OptionsEditor::Choices::*flag;
    };
    static const FlagBox kFlagBoxes[];

    void OnInit() override;
    bool OnKey(WPARAM key) override;
    bool IsMirrored(HWND control) const override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnTabSelected(int tab) override;
    void OnCommand(int id, int code);
    void OnClick(int id);
    void OnPathBox(int code);
    void OnFlagBox(int id);
    void OnLanguageOption();
    void OnColor(OptionsEditor::Color color);

    void MakePanels();
    // Makes the window as wide as its panels need it.
    void FitPanels();
    void ShowChoices();
    void ShowColors();
    void ShowStates();

    OptionsEditor& m_options;
    const DialogStyle& m_style;
    TabStrip tbsOptions;
    std::array<DialogPanel, 3> picOptions;
    DialogControl chkShowgridlines{picOptions[kLayout], IDC_OPTIONS_CHKSHOWGRIDLINES};
    DialogControl chkFlatUserInterface{picOptions[kLayout], IDC_OPTIONS_CHKFLATUSERINTERFACE};
    DialogControl chkFixedBorders{picOptions[kLayout], IDC_OPTIONS_CHKFIXEDBORDERS};
    DialogControl cboTheme{picOptions[kLayout], IDC_OPTIONS_CBOTHEME};
    std::array<ColorButton, 3> lblColorChange;  // text, background, active keys
    DialogControl chkAlwaysRestartTC{picOptions[kOperation], IDC_OPTIONS_CHKALWAYSRESTARTTC};
    DialogControl chkAutoSelectnextkey{picOptions[kOperation], IDC_OPTIONS_CHKAUTOSELECTNEXTKEY};
    DialogControl optUseDefaultLanguage{picOptions[kLanguage], IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE};
    DialogControl optUseOtheLanguage{picOptions[kLanguage], IDC_OPTIONS_OPTUSEOTHELANGUAGE};
    DialogControl txtLanguageFilePath{picOptions[kLanguage], IDC_OPTIONS_TXTLANGUAGEFILEPATH};
    DialogControl cmdBrowseForLangFile{picOptions[kLanguage], IDC_OPTIONS_CMDBROWSEFORLANGFILE};
    DialogControl cmdApply{*this, IDC_OPTIONS_CMDAPPLY};
};

}  // namespace tamarind
