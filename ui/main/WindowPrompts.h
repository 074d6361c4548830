#pragma once

#include "ui/shell/cCommonDialog.h"
#include "ui/toolkit/Dialog.h"

namespace tamarind {

// Asks and tells the user by message boxes and dialogs of the system, in front of the owner window
// or of the dialog that the user is in. While the owner is hidden they stand alone and have a
// button in the taskbar.
class WindowPrompts final : public UserPrompts {
public:
    // `title` is that of message boxes.
    explicit WindowPrompts(std::wstring title) : m_title(std::move(title)) {}

    // Null, as at first: there is no main window yet.
    void SetOwner(HWND owner) { m_owner = owner; }
    // For the program's own dialogs, which are not shown before it is set. It must outlive this
    // object.
    void SetStyle(const DialogStyle& style) { m_style = &style; }

    void ShowMessage(MessageIcon icon, const std::string& text) override;
    Answer Ask(const std::string& text) override;
    bool AskWhetherSure(const std::string& text) override;
    std::string BrowseForOpen(const FileQuestion& question) override;
    std::string BrowseForSave(const FileQuestion& question) override;
    std::string BrowseForFolder(const std::string& folder) override;
    bool FontSelect(FontChoice& font) override;
    std::string ColorSelect() override;
    void StartColorAt(std::int32_t color) override;
    bool ResolveConflicts(std::vector<ValueConflict>& conflicts) override;
    bool ReviewImport(ImportReview& review) override;
    void CopyText(const std::string& text) override;
    void Beep() override;

private:
    // The window that a question is to be in front of.
    HWND PresentOwner() const;
    cCommonDialog& FileDialog();
    int ShowBox(const std::string& text, UINT flags) const;

    std::wstring m_title;
    HWND m_owner = nullptr;
    const DialogStyle* m_style = nullptr;
    cCommonDialog m_dialog;
};

}  // namespace tamarind
