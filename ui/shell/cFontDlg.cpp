#include "ui/shell/cFontDlg.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/LateFunction.h"

namespace tamarind {
namespace {

constexpr int kTenths = 10;  // the dialog counts in tenths of a point
constexpr int kSmallest = 8;
constexpr int kLargest = 72;
constexpr BYTE kVariablePitch = 16;

constexpr DWORD kFlags =
    CF_BOTH | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS | CF_LIMITSIZE | CF_FORCEFONTEXIST;
static_assert(kFlags == 74051);

}  // namespace

LOGFONTW cFontDlg::LogicalFont(int dpi) const {
    LOGFONTW font =
        LogicalFontOf({Widen(mvarFontName), mvarFontScript, mvarFontSize, mvarFontStyle}, dpi);
    font.lfPitchAndFamily = kVariablePitch;
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
    mvarFontStyle = StyleOf(font);
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
