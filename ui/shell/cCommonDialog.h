#pragma once

#include <windows.h>

#include <commdlg.h>

#include <array>
#include <string>
#include <string_view>

#include "model/program/UserPrompts.h"

namespace tamarind {

// An entry of the filter table: descriptions and patterns, separated by bars.
std::string_view FilterText(FileFilter lngFilter);

// The same in the form that the file dialogs take: a NUL after each part and one more at the end.
std::wstring FilterForDialog(FileFilter lngFilter);

// The flags of the dialog for saving. With `blnShowWarningMsg` it asks before an existing file is
// chosen.
DWORD SaveFlags(bool blnShowWarningMsg);

// The system's dialogs for opening and saving files and for colors. Remembers the folders of the
// last choices and the colors that the user has mixed. Each function returns the
// MissingValueMarker if the user cancels or the dialog cannot be shown. comdlg32.dll is loaded on
// the first use.
class cCommonDialog {
public:
    // In UTF-16 units: the longest path of Windows.
    static constexpr std::size_t kMaxPathUnits = 32767;

    cCommonDialog();

    // The window that the next dialogs are in front of; ignored while it is hidden.
    void Setup(HWND owner) { m_owner = owner; }

    // The chosen path. `strFileName` is proposed; with an empty `strInitDir` the dialog opens in
    // the folder of the last choice, with an empty title under its usual English one. A pattern
    // such as "*.dll;*.icl" is offered before those of the filter.
    std::string BrowseForOpen(const std::string& strInitDir, const std::string& strFileName,
                              FileFilter lngFilter, const std::string& strTitle,
                              const std::string& pattern = {});
    std::string BrowseForSave(const std::string& strInitDir, const std::string& strFileName,
                              FileFilter lngFilter, const std::string& strTitle,
                              bool blnShowWarningMsg);

    // The chosen color (COLORREF) as a decimal number.
    std::string ColorSelect();
    // The color that the dialog starts with the next time.
    void StartColorAt(COLORREF color) { m_color = color; }

private:
    struct FileDialog {
        const char* function;
        const wchar_t* title;  // when the caller gives none
        DWORD flags;
        std::string& folder;  // of the last choice
    };
    std::string Browse(const FileDialog& kind, const std::string& strInitDir,
                       const std::string& strFileName, const std::wstring& filter,
                       const std::string& strTitle) const;
    HWND VisibleOwner() const { return IsWindowVisible(m_owner) ? m_owner : nullptr; }

    HWND m_owner = nullptr;
    std::string m_openFolder;
    std::string m_saveFolder;
    COLORREF m_color = 0;
    std::array<COLORREF, 16> m_customColors{};
};

}  // namespace tamarind
