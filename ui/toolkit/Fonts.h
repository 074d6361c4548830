#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A font as a user chooses it.
struct UserFont {
    std::wstring name;
    int charset = DEFAULT_CHARSET;
    int points = 10;
    int style = 0;  // 1 bold, 2 italic, 4 strikethrough, 8 underline
};

// Gives a control the font and the character set of the user: in their size and style, or, if not
// `withUserSize`, in `points` without any style.
void ApplyUserFont(Control& control, const UserFont& font, bool withUserSize, int points, int dpi);

// The font of message boxes and status bars. Empty if Windows does not tell.
UniqueFont MakeMessageFont(int dpi);

// Whether the system has a font of that name, rather than another one that it would take instead.
bool HasFont(const std::wstring& name);

}  // namespace tamarind
