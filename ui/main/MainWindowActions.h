#pragma once

#include <windows.h>

#include "model/program/Commands.h"

namespace tamarind {

enum class PopupMenu { CategoryTree, KeyList };

// What the parts of the main window need of it.
class MainWindowActions {
public:
    virtual void Execute(Command command) = 0;
    // The same for a button of the main toolbar, which first closes the edit box.
    virtual void ExecuteButton(Command command) = 0;
    virtual void FocusKeyList() = 0;
    // `at` is in screen coordinates.
    virtual void ShowPopup(PopupMenu menu, POINT at) = 0;
    // The menu of a toolbar button's arrow; `button` is in screen coordinates.
    virtual void ShowDropDown(Command command, const RECT& button) = 0;

protected:
    ~MainWindowActions() = default;
};

}  // namespace tamarind
