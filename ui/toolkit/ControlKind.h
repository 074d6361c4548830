#pragma once

#include <windows.h>

namespace tamarind {

// The kinds of controls that dialogs treat differently for texts, mirroring and colors.
enum class ControlKind {
    Label,
    CheckBox,
    OptionButton,
    CommandButton,
    Frame,
    DrawnButton,  // its owner draws something else than its text
    TextBox,
    List,
    Other,
};

// By window class and style.
ControlKind KindOf(HWND control);

// Whether controls of that kind have a text of their own. In a template the number of the text
// stands in its place.
constexpr bool HasCaption(ControlKind kind) {
    return kind != ControlKind::TextBox && kind != ControlKind::List && kind != ControlKind::Other;
}

}  // namespace tamarind
