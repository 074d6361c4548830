#pragma once

#include "ui/shell/cCommonDialog.h"

namespace tamarind {

// Asks and tells the user with the system's boxes and dialogs, in front of an owner window. While
// that is hidden they stand alone and have a button in the taskbar.
class WindowPrompts final : public UserPrompts {
public:
    explicit WindowPrompts(std::wstring title) : m_title(std::move(title)) {}

    void SetOwner(HWND owner);

    void ShowMessage(MessageIcon icon, const std::string& text) override;
    Answer Ask(const std::string& text) override;
    std::string BrowseForOpen(const FileQuestion& question) override;
    std::string ColorSelect() override { return m_dialog.ColorSelect(); }
    void Beep() override;

private:
    int ShowBox(const std::string& text, UINT flags) const;

    std::wstring m_title;
    HWND m_owner = nullptr;
    cCommonDialog m_dialog;
};

}  // namespace tamarind
