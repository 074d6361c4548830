#include "ui/search/frmSearchFor.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

void frmSearchFor::Open(HWND owner) {
    if (Handle() == nullptr && !Create(owner)) {
        return;
    }
    m_hasFound = false;
    m_finding.Search().Restart();
    PreSelectText();
    ShowWindow(Handle(), SW_SHOW);
    SetActiveWindow(Handle());
}

void frmSearchFor::FindNextString(HWND owner) {
    if (Handle() != nullptr || Create(owner)) {
        m_finding.FindNextString();
    }
}

void frmSearchFor::OnInit() {
    const KeySearch& search = m_finding.Search();
    txtFind.SetText(Widen(search.Text()));
    optKeyName.SetChecked(search.SearchesNames());
    optKeyDescription.SetChecked(!search.SearchesNames());
    chkWholeWord.SetChecked(search.MatchesWholeWord());
    cmdFindNext.Enable(search.CanFind());
    CenterForm(Handle());
}

std::optional<LRESULT> frmSearchFor::HandleMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                return std::nullopt;
            }
            OnActivate();
            return 0;
        default:
            return std::nullopt;
    }
}

// Moving the focus as the Tab key does would select the whole text, so its selection is restored.
void frmSearchFor::OnActivate() {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(txtFind.Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    txtFind.Focus();
    SendMessageW(txtFind.Handle(), EM_SETSEL, start, static_cast<LPARAM>(end));
}

void frmSearchFor::OnCommand(int id, int code) {
    switch (id) {
        case IDC_SEARCHFOR_TXTFIND:
            if (code == EN_CHANGE) {
                OnTextChanged();
            }
            break;
        case IDC_SEARCHFOR_OPTKEYNAME:
        case IDC_SEARCHFOR_OPTKEYDESCRIPTION:
            m_finding.Search().SetSearchesNames(optKeyName.IsChecked());
            break;
        case IDC_SEARCHFOR_CHKWHOLEWORD:
            m_finding.Search().SetMatchesWholeWord(chkWholeWord.IsChecked());
            break;
        case IDC_SEARCHFOR_CMDFINDNEXT:
            if (!m_workplace.IsBusy()) {
                m_hasFound |= m_finding.FindNextString();
            }
            break;
        case IDCANCEL:
            if (m_hasFound) {
                m_onFound();
            }
            ShowWindow(Handle(), SW_HIDE);
            break;
        default:
            break;
    }
}

void frmSearchFor::OnTextChanged() {
    m_finding.SetSearchText(Narrow(txtFind.Text()));
    cmdFindNext.Enable(m_finding.Search().CanFind());
}

}  // namespace tamarind
