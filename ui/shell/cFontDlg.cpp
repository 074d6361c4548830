#include "ui/shell/cFontDlg.h"

#include <algorithm>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kBold = 1;
constexpr int kItalic = 2;
constexpr int kStrikeOut = 4;
constexpr int kUnderline = 8;

constexpr int kPointsPerInch = 72;
constexpr int kTenths = 10;  // the dialog counts in tenths of a point
constexpr int kSmallest = 8;
constexpr int kLargest = 72;
constexpr BYTE kVariablePitch = 16;

constexpr DWORD kFlags =
    CF_BOTH | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS | CF_LIMITSIZE | CF_FORCEFONTEXIST;
static_assert(kFlags == 74051);

}  // namespace

LOGFONTW cFontDlg::LogicalFont(int dpi) const {
    LOGFONTW font{};
    font.lfHeight = -Scaled(mvarFontSize, dpi, kPointsPerInch);
    font.lfWeight = (mvarFontStyle & kBold) != 0 ? FW_BOLD : FW_NORMAL;
    font.lfItalic = (mvarFontStyle & kItalic) != 0;
    font.lfStrikeOut = (mvarFontStyle & kStrikeOut) != 0;
    font.lfUnderline = (mvarFontStyle & kUnderline) != 0;
    font.lfCharSet = static_cast<BYTE>(mvarFontScript);
    font.lfPitchAndFamily = kVariablePitch;
    const std::wstring name = Widen(mvarFontName).substr(0, LF_FACESIZE - 1);
    std::copy(name.begin(), name.end(), font.lfFaceName);
    return font;
}

CHOOSEFONTW cFontDlg::DialogRecord(LOGFONTW& font, HDC dc) const {
    CHOOSEFONTW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = mvarTargetFormhWnd;
    dialog.hDC = dc;
    dialog.lpLogFont = &font;
    dialog.iPointSize = mvarFontSize * kTenths;
    dialog.Flags = kFlags;
    dialog.nSizeMin = kSmallest;
    dialog.nSizeMax = kLargest;
    return dialog;
}

void cFontDlg::TakeChoice(const LOGFONTW& font, const CHOOSEFONTW& dialog) {
    mvarFontName = Narrow(font.lfFaceName);
    mvarFontSize = dialog.iPointSize / kTenths;
    mvarFontStyle = (font.lfWeight >= FW_BOLD ? kBold : 0) | (font.lfItalic ? kItalic : 0) |
                    (font.lfStrikeOut ? kStrikeOut : 0) | (font.lfUnderline ? kUnderline : 0);
    mvarFontScript = font.lfCharSet;
}

bool cFontDlg::ShowFont() {
    // The fonts of the screen serve for those of a printer, too: not every machine has one.
    const ScreenDC screen;
    LOGFONTW font = LogicalFont(GetDeviceCaps(screen.Get(), LOGPIXELSY));
    CHOOSEFONTW dialog = DialogRecord(font, screen.Get());
    static const auto chooseFont = DialogFunction<decltype(&ChooseFontW)>("ChooseFontW");
    if (chooseFont == nullptr || !chooseFont(&dialog)) {
        return false;
    }
    TakeChoice(font, dialog);
    return true;
}

}  // namespace tamarind
