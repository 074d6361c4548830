#pragma once

#include <windows.h>

#include <commdlg.h>

#include <string>

namespace tamarind {

// The system's font dialog. Its members are what it starts with and what the user has chosen.
class cFontDlg {
public:
    std::string mvarFontName;
    int mvarFontSize = 10;  // points
    int mvarFontStyle = 0;  // 1 bold, 2 italic, 4 strikethrough, 8 underline
    int mvarFontScript = DEFAULT_CHARSET;
    HWND mvarTargetFormhWnd = nullptr;

    // Returns whether the user has confirmed; the members above are then their choice.
    bool ShowFont();

    // The members as Windows describes a font at this DPI, and the record that the dialog is called
    // with. `font` and the device context `dc`, whose fonts it offers, must outlive the call.
    LOGFONTW LogicalFont(int dpi) const;
    CHOOSEFONTW DialogRecord(LOGFONTW& font, HDC dc) const;
    // Takes over what the dialog has left in both.
    void TakeChoice(const LOGFONTW& font, const CHOOSEFONTW& dialog);
};

}  // namespace tamarind
