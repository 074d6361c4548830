#pragma once

#include <windows.h>

#include <commdlg.h>

#include <string>

namespace tamarind {

// The system's dialog for fonts.
class cFontDlg {
public:
    std::string mvarFontName;
    int mvarFontSize = 10;  // points
    int mvarFontStyle = 0;  // 1 bold, 2 italic, 4 strikethrough, 8 underline
    int mvarFontScript = DEFAULT_CHARSET;
    HWND mvarTargetFormhWnd = nullptr;

    // Returns whether the user confirmed; then the values above are his choice.
    bool ShowFont();

    // The values as Windows describes a font, and what the dialog is called with: `font` and the
    // device context, whose fonts it offers, must outlive the call.
    LOGFONTW LogicalFont(int dpi) const;
    CHOOSEFONTW DialogRecord(LOGFONTW& font, HDC dc) const;
    // Takes what the dialog left in both.
    void TakeChoice(const LOGFONTW& font, const CHOOSEFONTW& dialog);
};

}  // namespace tamarind
