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

// Gives a control the user's font and character set: in his size and style, or else in `points`
// without any style.
void ApplyUserFont(Control& control, const UserFont& font, bool withUserSize, int points, int dpi);

// The font that Windows uses in message boxes and status bars.
UniqueFont MakeMessageFont(int dpi);

// Whether the system has a font of that name, and not only another one in its place.
bool HasFont(const std::wstring& name);

}  // namespace tamarind
