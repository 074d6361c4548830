#pragma once

#include <windows.h>

#include <commdlg.h>

#include <array>
#include <string>
#include <string_view>

#include "model/program/UserPrompts.h"

namespace tamarind {

// The text of an entry of the filter table: descriptions and patterns with bars between them.
std::string_view FilterText(FileFilter lngFilter);

// As the file dialogs take it: a NUL behind every part, another one at the end.
std::wstring FilterForDialog(FileFilter lngFilter);

// The flags of the dialog for saving; with the warning it asks before a file is replaced.
DWORD SaveFlags(bool blnShowWarningMsg);

// The system's dialogs for opening and saving files and for colours. It remembers the folders of
// the last choices and the colours that the user mixed. Each gives the MissingValueMarker back
// when the user cancels.
class cCommonDialog {
public:
    // Paths may be as long as Windows allows.
    static constexpr std::size_t kMaxPathUnits = 32767;

    cCommonDialog();

    void Setup(HWND owner) { m_owner = owner; }

    // The chosen path.
    std::string BrowseForOpen(const std::string& strInitDir, const std::string& strFileName,
                              FileFilter lngFilter, const std::string& strTitle);
    std::string BrowseForSave(const std::string& strInitDir, const std::string& strFileName,
                              FileFilter lngFilter, const std::string& strTitle,
                              bool blnShowWarningMsg);

    // The chosen colour as a decimal number.
    std::string ColorSelect();
    void StartColorAt(COLORREF color) { m_color = color; }

private:
    struct FileDialog {
        const char* function;
        const wchar_t* title;  // when the caller gives none
        DWORD flags;
        std::string& folder;  // of the last choice
    };
    std::string Browse(const FileDialog& kind, const std::string& strInitDir,
                       const std::string& strFileName, FileFilter lngFilter,
                       const std::string& strTitle) const;
    HWND VisibleOwner() const { return IsWindowVisible(m_owner) ? m_owner : nullptr; }

    HWND m_owner = nullptr;
    std::string m_openFolder;
    std::string m_saveFolder;
    COLORREF m_color = 0;
    std::array<COLORREF, 16> m_customColors{};
};

}  // namespace tamarind
