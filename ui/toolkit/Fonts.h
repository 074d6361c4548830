#pragma once

#include <string>
#include <string_view>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A font as a user chooses it.
struct UserFont {
    std::wstring name;
    int charset = DEFAULT_CHARSET;
    int points = 10;
    int style = 0;  // 1 bold, 2 italic, 4 strikethrough, 8 underline
};

// As Windows describes it; the name is cut to what fits.
LOGFONTW LogicalFontOf(const UserFont& font, int dpi);

// The style of a font that Windows describes, as in UserFont.
int StyleOf(const LOGFONTW& font);

// The font of the user, in their size and style, as it is drawn. Empty if Windows has none.
UniqueFont MakeUserFont(const UserFont& font, int dpi);

// Gives a control the font and the character set of the user: in their size and style, or, if not
// `withUserSize`, in `points` without any style.
void ApplyUserFont(Control& control, const UserFont& font, bool withUserSize, int points, int dpi);

// The height of a line of text in a font, in pixels.
int LineHeightOf(HFONT font);

// How wide a button with a single sign in a font is at least, in pixels: where texts are large,
// wider than `designPixels` (at 96 DPI).
int SignButtonWidth(HFONT font, int designPixels, int dpi);

// How wide a text is in a window's font, in pixels.
int TextWidth(HWND window, const std::wstring& text);
// The same in the font that is selected in a device context.
int TextWidth(HDC dc, std::wstring_view text);

// The font of message boxes and status bars. Empty if Windows does not tell.
UniqueFont MakeMessageFont(int dpi);

// A font whose characters all have the same width, in the size of message boxes.
UniqueFont MakeFixedPitchFont(int dpi);

// Whether the system has a font of that name, rather than another one that it would take instead.
bool HasFont(const std::wstring& name);

}  // namespace tamarind
