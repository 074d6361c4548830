#include "ui/main/WindowPrompts.h"

#include "core/text/WideText_win32.h"
#include "ui/changes/frmConflicts.h"
#include "ui/changes/frmImportReview.h"
#include "ui/shell/FolderDialog.h"
#include "ui/shell/cFontDlg.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/ModalLock.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

UINT IconFlag(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return MB_ICONERROR;
        case MessageIcon::Question:
            return MB_ICONQUESTION;
        case MessageIcon::Information:
            return MB_ICONINFORMATION;
        case MessageIcon::Exclamation:
            break;
    }
    return MB_ICONWARNING;
}

}  // namespace

HWND WindowPrompts::PresentOwner() const {
    const HWND dialog = GetLastActivePopup(m_owner);
    return IsWindowVisible(dialog) ? dialog : m_owner;
}

cCommonDialog& WindowPrompts::FileDialog() {
    m_dialog.Setup(PresentOwner());
    return m_dialog;
}

int WindowPrompts::ShowBox(const std::string& text, UINT flags) const {
    const HWND owner = PresentOwner();
    const ModalLock lock(owner);
    const bool isRightToLeft = m_style != nullptr && m_style->isRightToLeft;
    return MessageBoxW(IsWindowVisible(owner) ? owner : nullptr, Widen(text).c_str(),
                       m_title.c_str(), flags | (isRightToLeft ? MB_RTLREADING | MB_RIGHT : 0U));
}

void WindowPrompts::ShowMessage(MessageIcon icon, const std::string& text) {
    ShowBox(text, MB_OK | IconFlag(icon));
}

// A box that cannot be shown counts as cancelled, not as consent.
Answer WindowPrompts::Ask(const std::string& text) {
    switch (ShowBox(text, MB_YESNOCANCEL | MB_ICONQUESTION)) {
        case IDYES:
            return Answer::Yes;
        case IDNO:
            return Answer::No;
        default:
            return Answer::Cancel;
    }
}

std::string WindowPrompts::BrowseForOpen(const FileQuestion& question) {
    const ModalLock lock(PresentOwner());
    return FileDialog().BrowseForOpen(question.initialFolder, question.fileName, question.filter,
                                      question.title, question.pattern);
}

std::string WindowPrompts::BrowseForFolder(const std::string& folder) {
    const HWND owner = PresentOwner();
    const ModalLock lock(owner);
    return ChooseFolder(IsWindowVisible(owner) ? owner : nullptr, folder);
}

bool WindowPrompts::AskWhetherSure(const std::string& text) {
    return ShowBox(text, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

std::string WindowPrompts::BrowseForSave(const FileQuestion& question) {
    const ModalLock lock(PresentOwner());
    return FileDialog().BrowseForSave(question.initialFolder, question.fileName, question.filter,
                                      question.title, false);
}

bool WindowPrompts::FontSelect(FontChoice& font) {
    cFontDlg dialog;
    dialog.mvarFontName = font.name;
    dialog.mvarFontSize = font.points;
    dialog.mvarFontStyle = font.style;
    dialog.mvarFontScript = font.charset;
    dialog.mvarTargetFormhWnd = PresentOwner();
    const ModalLock lock(dialog.mvarTargetFormhWnd);
    if (!dialog.ShowFont()) {
        return false;
    }
    font = {dialog.mvarFontName, dialog.mvarFontSize, dialog.mvarFontStyle, dialog.mvarFontScript};
    return true;
}

std::string WindowPrompts::ColorSelect() {
    const ModalLock lock(PresentOwner());
    return FileDialog().ColorSelect();
}

void WindowPrompts::StartColorAt(std::int32_t color) {
    m_dialog.StartColorAt(ColorOfSetting(color));
}

bool WindowPrompts::ResolveConflicts(std::vector<ValueConflict>& conflicts) {
    const HWND owner = PresentOwner();
    return m_style != nullptr &&
           frmConflicts(*m_style).Show(IsWindowVisible(owner) ? owner : nullptr, conflicts);
}

bool WindowPrompts::ReviewImport(ImportReview& review) {
    const HWND owner = PresentOwner();
    return m_style != nullptr &&
           frmImportReview(*m_style).Show(IsWindowVisible(owner) ? owner : nullptr, review);
}

void WindowPrompts::CopyText(const std::string& text) {
    CopyToClipboard(m_owner, Widen(text));
}

void WindowPrompts::Beep() {
    MessageBeep(MB_OK);
}

}  // namespace tamarind
