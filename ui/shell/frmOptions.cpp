#include "ui/shell/frmOptions.h"

#include <algorithm>
#include <cstdint>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

using Choices = OptionsEditor::Choices;

constexpr std::uint16_t kTabTexts[] = {1002, 1005, 1006};
constexpr std::uint16_t kThemeTexts[] = {4213, 4214, 4215};  // in the order of the setting
constexpr OptionsEditor::Color kColors[] = {
    OptionsEditor::Color::Text, OptionsEditor::Color::Background, OptionsEditor::Color::ActiveKey};

}  // namespace

const frmOptions::FlagBox frmOptions::kFlagBoxes[] = {
    {IDC_OPTIONS_CHKSHOWGRIDLINES, &frmOptions::chkShowgridlines, &Choices::showsGridLines},
    {IDC_OPTIONS_CHKFLATUSERINTERFACE, &frmOptions::chkFlatUserInterface, &Choices::isFlat},
    {IDC_OPTIONS_CHKFIXEDBORDERS, &frmOptions::chkFixedBorders, &Choices::hasFixedBorders},
    {IDC_OPTIONS_CHKALWAYSRESTARTTC, &frmOptions::chkAlwaysRestartTC,
     &Choices::restartsTotalCommander},
    {IDC_OPTIONS_CHKAUTOSELECTNEXTKEY, &frmOptions::chkAutoSelectnextkey, &Choices::selectsNextKey},
};

frmOptions::frmOptions(OptionsEditor& options, const DialogStyle& style)
    : Dialog(IDD_FRMOPTIONS, L"frmOptions", style),
      m_options(options),
      m_style(style),
      picOptions{{{IDD_OPTIONS_LAYOUT, L"picOptions", style},
                  {IDD_OPTIONS_OPERATION, L"picOptions", style},
                  {IDD_OPTIONS_LANGUAGE, L"picOptions", style}}} {}

void frmOptions::Show(HWND owner) {
    if (ShowModal(owner) != -1) {
        m_options.End();
    }
}

void frmOptions::OnInit() {
    m_options.Begin();
    MakePanels();
    FitPanels();
    ShowChoices();
    OnTabSelected(tbsOptions.Selected());
    CenterForm(Handle());
}

void frmOptions::MakePanels() {
    tbsOptions.Attach(Handle(), IDC_OPTIONS_TBSOPTIONS, *this);
    for (const std::uint16_t number : kTabTexts) {
        tbsOptions.AddTab(m_style.text(number));
    }
    for (DialogPanel& panel : picOptions) {
        panel.Create(Handle());
    }
    for (const std::uint16_t number : kThemeTexts) {
        SendMessageW(cboTheme.Handle(), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(m_style.text(number).c_str()));
    }
    for (std::size_t index = 0; index < lblColorChange.size(); ++index) {
        lblColorChange[index].Attach(picOptions[kLayout].Handle(),
                                     IDC_OPTIONS_LBLCOLORCHANGE0 + static_cast<int>(index));
    }
}

// All panels are as wide as the one with the longest texts.
void frmOptions::FitPanels() {
    int missing = tbsOptions.MissingWidth();
    const int page = SizeOf(tbsOptions.PageBounds()).cx;
    for (const DialogPanel& panel : picOptions) {
        missing = std::max(missing, panel.Width() - page);
    }
    if (missing > 0) {
        const int strip = ClientSizeOf(tbsOptions.Handle()).cx;
        StretchTo(Scaled(ClientSizeOf(Handle()).cx, strip + missing + 1, strip));
    }
    for (DialogPanel& panel : picOptions) {
        panel.SetBounds(tbsOptions.PageBounds());
    }
}

bool frmOptions::IsMirrored(HWND control) const {
    return control == GetDlgItem(Handle(), IDC_OPTIONS_TBSOPTIONS) || Dialog::IsMirrored(control);
}

void frmOptions::OnTabSelected(int tab) {
    const HWND focus = GetFocus();
    const bool isFocusInPanel = std::ranges::any_of(
        picOptions, [&](const DialogPanel& panel) { return IsChild(panel.Handle(), focus); });
    const DialogPanel& shown = picOptions[static_cast<std::size_t>(tab)];
    shown.Show(true);
    if (isFocusInPanel) {
        shown.FocusFirst();
    }
    for (const DialogPanel& panel : picOptions) {
        if (&panel != &shown) {
            panel.Show(false);
        }
    }
}

bool frmOptions::OnKey(WPARAM key) {
    if (!IsKeyDown(VK_CONTROL)) {
        return false;
    }
    switch (key) {
        case VK_TAB:
            tbsOptions.SelectNext(!IsKeyDown(VK_SHIFT));
            return true;
        case VK_NEXT:
        case VK_PRIOR:
            tbsOptions.SelectNext(key == VK_NEXT);
            return true;
        default:
            return false;
    }
}

std::optional<LRESULT> frmOptions::HandleMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_SYSCOLORCHANGE:
            ShowColors();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void frmOptions::OnCommand(int id, int code) {
    if (id == IDC_OPTIONS_TXTLANGUAGEFILEPATH) {
        OnPathBox(code);
    } else if (id == IDC_OPTIONS_CBOTHEME && code == CBN_SELCHANGE) {
        m_options.SetTheme(
            static_cast<std::int32_t>(SendMessageW(cboTheme.Handle(), CB_GETCURSEL, 0, 0)));
        ShowStates();
    } else if (code == BN_CLICKED) {
        OnClick(id);
    }
}

void frmOptions::OnClick(int id) {
    switch (id) {
        case IDC_OPTIONS_LBLCOLORCHANGE0:
        case IDC_OPTIONS_LBLCOLORCHANGE1:
        case IDC_OPTIONS_LBLCOLORCHANGE2:
            OnColor(kColors[id - IDC_OPTIONS_LBLCOLORCHANGE0]);
            break;
        case IDC_OPTIONS_CMDCHANGEFONT:
            m_options.SelectFont();
            break;
        case IDC_OPTIONS_OPTUSEDEFAULTLANGUAGE:
        case IDC_OPTIONS_OPTUSEOTHELANGUAGE:
            OnLanguageOption();
            break;
        case IDC_OPTIONS_CMDBROWSEFORLANGFILE:
            if (m_options.BrowseLanguageFile()) {
                txtLanguageFilePath.SetText(Widen(m_options.Values().languageFile));
            }
            break;
        case IDC_OPTIONS_CMDAPPLY:
            m_options.Apply();
            ShowColors();  // those of the theme may be others
            break;
        case IDOK:
            if (m_options.Apply()) {
                EndModal(IDOK);
                return;
            }
            break;
        case IDCANCEL:
            EndModal(IDCANCEL);
            return;
        default:
            OnFlagBox(id);
            break;
    }
    ShowStates();
}

void frmOptions::OnPathBox(int code) {
    if (code == EN_SETFOCUS) {
        txtLanguageFilePath.SelectText();
    } else if (code == EN_CHANGE) {
        // Not if the text is what the program itself has put there.
        const std::string path = Narrow(txtLanguageFilePath.Text());
        if (path != m_options.Values().languageFile) {
            m_options.SetLanguageFile(path);
            ShowStates();
        }
    }
}

void frmOptions::OnFlagBox(int id) {
    for (const FlagBox& row : kFlagBoxes) {
        if (row.id == id) {
            m_options.SetFlag(row.flag, (this->*row.box).IsChecked());
        }
    }
}

// Windows reports a click also when an option only gets the focus.
void frmOptions::OnLanguageOption() {
    const bool usesDefault = optUseDefaultLanguage.IsChecked();
    if (usesDefault != m_options.Values().usesDefaultLanguage) {
        m_options.SetFlag(&Choices::usesDefaultLanguage, usesDefault);
    }
}

void frmOptions::OnColor(OptionsEditor::Color color) {
    if (m_options.SelectColor(color)) {
        ShowColors();
    }
}

void frmOptions::ShowChoices() {
    const Choices& choices = m_options.Values();
    for (const FlagBox& row : kFlagBoxes) {
        (this->*row.box).SetChecked(choices.*row.flag);
    }
    optUseDefaultLanguage.SetChecked(choices.usesDefaultLanguage);
    optUseOtheLanguage.SetChecked(!choices.usesDefaultLanguage);
    txtLanguageFilePath.SetText(Widen(choices.languageFile));
    SendMessageW(cboTheme.Handle(), CB_SETCURSEL, static_cast<WPARAM>(choices.theme), 0);
    ShowColors();
    ShowStates();
}

void frmOptions::ShowColors() {
    for (const OptionsEditor::Color color : kColors) {
        const std::int32_t setting = m_options.ColorSetting(color);
        lblColorChange[static_cast<std::size_t>(color)].SetColor(ColorOfSetting(setting));
    }
}

void frmOptions::ShowStates() {
    cmdApply.Enable(m_options.IsChanged());
    txtLanguageFilePath.Enable(!m_options.Values().usesDefaultLanguage);
    cmdBrowseForLangFile.Enable(!m_options.Values().usesDefaultLanguage);
}

}  // namespace tamarind
