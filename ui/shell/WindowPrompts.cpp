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

void WindowPrompts::ShowMessage(MessageIcon icon, const std::string& text) {
    MessageBoxW(IsWindowVisible(m_owner) ? m_owner : nullptr, Widen(text).c_str(), m_title.c_str(),
                MB_OK | IconFlag(icon));
}

std::string WindowPrompts::BrowseForOpen(const FileQuestion& question) {
    return m_dialog.BrowseForOpen(question.initialFolder, question.fileName, question.filter,
                                  question.title);
}

void WindowPrompts::Beep() {
    MessageBeep(MB_OK);
}

}  // namespace tamarind
