#pragma once

#include <array>
#include <string>

#include "ui/toolkit/ColorButton.h"
#include "ui/toolkit/Label.h"
#include "ui/toolkit/PushButton.h"
#include "ui/toolkit/SpinButton.h"
#include "ui/toolkit/TextField.h"
#include "ui/toolkit/WarningSign.h"

namespace tamarind {

// What the texts of the value bar are, for the widths of its controls.
struct ValueBarTexts {
    std::wstring name;  // of the key
    std::wstring nameWithState;
    std::wstring unit;
    std::wstring note;  // the default, or the sentence about a value
    bool isWarning = false;
};

// The controls of the value bar, from left to right. Each is made when a key first needs it.
struct ValueBarParts {
    Label lblKey;
    TextField txtValue;
    PushButton cmdChoices;
    SpinButton spnValue;
    Label lblUnit;
    ColorButton cmdColor;
    PushButton cmdBrowse;
    WarningSign picWarning;
    Label lblNote;
    PushButton cmdReset;

    std::array<Control*, 10> All();

    static bool IsShown(const Control& part);
    // Does nothing if the control is not made, or is as wanted.
    static void SetShown(Control& part, bool isVisible);

    // Of the bar, in pixels.
    static int HeightFor(HFONT font, int dpi);
    // Shows the texts and places the controls in `bar`. Those without room are hidden.
    void Layout(HWND bar, HFONT font, int dpi, const ValueBarTexts& texts);

private:
    struct PartBeside {
        Control& part;
        int width;  // pixels
    };
    std::array<PartBeside, 6> PartsBeside(HDC dc, HFONT font, int dpi, const std::wstring& unit);
};

}  // namespace tamarind
