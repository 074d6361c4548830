#pragma once

#include <windows.h>

#include "model/program/Commands.h"

namespace tamarind {

// Pop-up menus that parts of the main window ask for.
enum class PopupMenu { CategoryTree, KeyList, Columns };

// What the parts of the main window need from it, so that they do not depend on frmMain.
class MainWindowActions {
public:
    // Carries out a command if it is enabled.
    virtual void Execute(Command command) = 0;
    // The same for a button of the main toolbar. The edit box is closed first.
    virtual void ExecuteButton(Command command) = 0;
    virtual void FocusKeyList() = 0;
    // Opens the data file for the other kind of settings.
    virtual void OpenOtherDataFile() = 0;
    // Opens the choices of the current key, or the field for its value.
    virtual void OpenChoices() = 0;
    // To be called after a value was stored: the next key's turn comes if the settings say so.
    virtual void ContinueWithNextKey() = 0;
    // `at` is in screen pixels. Returns when the menu is closed.
    virtual void ShowPopup(PopupMenu menu, POINT at) = 0;
    // Opens the menu of the arrow beside a toolbar button; `button` is in screen pixels.
    virtual void ShowDropDown(Command command, const RECT& button) = 0;

protected:
    ~MainWindowActions() = default;
};

}  // namespace tamarind
