#include "ui/shell/WindowPrompts.h"

#include "core/WideText_win32.h"

namespace tamarind {
namespace {

UINT IconFlag(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return MB_ICONERROR;
        case MessageIcon::Question:
            return MB_ICONQUESTION;
        case MessageIcon::Exclamation:
            break;
    }
    return MB_ICONWARNING;
}

}  // namespace

void WindowPrompts::SetOwner(HWND owner) {
    m_owner = owner;
    m_dialog.Setup(owner);
}

int WindowPrompts::ShowBox(const std::string& text, UINT flags) const {
    return MessageBoxW(IsWindowVisible(m_owner) ? m_owner : nullptr, Widen(text).c_str(),
                       m_title.c_str(), flags);
}

void WindowPrompts::ShowMessage(MessageIcon icon, const std::string& text) {
    ShowBox(text, MB_OK | IconFlag(icon));
}

// A box that could not be shown is no consent.
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
    return m_dialog.BrowseForOpen(question.initialFolder, question.fileName, question.filter,
                                  question.title);
}

void WindowPrompts::Beep() {
    MessageBeep(MB_OK);
}

}  // namespace tamarind
