#include "ui/toolkit/ControlKind.h"

#include <commctrl.h>

namespace tamarind {
namespace {

ControlKind KindOfStatic(LONG_PTR style) {
    switch (style & SS_TYPEMASK) {
        case SS_LEFT:
        case SS_CENTER:
        case SS_RIGHT:
        case SS_SIMPLE:
        case SS_LEFTNOWORDWRAP:
            return ControlKind::Label;
        default:
            return ControlKind::Other;
    }
}

ControlKind KindOfButton(LONG_PTR style) {
    switch (style & BS_TYPEMASK) {
        case BS_PUSHBUTTON:
        case BS_DEFPUSHBUTTON:
            return ControlKind::CommandButton;
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_3STATE:
        case BS_AUTO3STATE:
            return ControlKind::CheckBox;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return ControlKind::OptionButton;
        case BS_GROUPBOX:
            return ControlKind::Frame;
        case BS_OWNERDRAW:
            return ControlKind::DrawnButton;
        default:
            return ControlKind::Other;
    }
}

}  // namespace

ControlKind KindOf(HWND control) {
    wchar_t name[32] = L"";
    GetClassNameW(control, name, ARRAYSIZE(name));
    const auto isClass = [&](const wchar_t* wanted) {
        return CompareStringOrdinal(name, -1, wanted, -1, TRUE) == CSTR_EQUAL;
    };
    const LONG_PTR style = GetWindowLongPtrW(control, GWL_STYLE);
    if (isClass(WC_STATICW)) {
        return KindOfStatic(style);
    }
    if (isClass(WC_BUTTONW)) {
        return KindOfButton(style);
    }
    if (isClass(WC_LISTVIEWW)) {
        return ControlKind::List;
    }
    return isClass(WC_EDITW) ? ControlKind::TextBox : ControlKind::Other;
}

}  // namespace tamarind
