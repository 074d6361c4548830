#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "model/UserPrompts.h"

namespace tamarind {

// The text of an entry of the filter table: descriptions and patterns with bars between them.
std::string_view FilterText(FileFilter lngFilter);

// The system's dialog for opening files. It remembers the folder of the last choice.
class cCommonDialog {
public:
    // Paths may be as long as Windows allows.
    static constexpr std::size_t kMaxPathUnits = 32767;

    void Setup(HWND owner) { m_owner = owner; }

    // The chosen path, or the MissingValueMarker when the user cancels.
    std::string BrowseForOpen(const std::string& strInitDir, const std::string& strFileName,
                              FileFilter lngFilter, const std::string& strTitle);

private:
    HWND m_owner = nullptr;
    std::string m_openFolder;
};

}  // namespace tamarind
