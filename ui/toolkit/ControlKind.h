#pragma once

#include <windows.h>

namespace tamarind {

// The kinds of controls in dialogs that texts, mirroring and colours tell apart.
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

ControlKind KindOf(HWND control);

// Whether controls of that kind have a text of their own. Their template has its number.
constexpr bool HasCaption(ControlKind kind) {
    return kind != ControlKind::TextBox && kind != ControlKind::List && kind != ControlKind::Other;
}

}  // namespace tamarind
