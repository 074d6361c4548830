#include "ui/main/MainToolbar.h"

#include <vector>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "model/program/ToolbarSpec.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

// A placeholder is a separator with a width.
BYTE StyleOf(ButtonStyle style) {
    switch (style) {
        case ButtonStyle::Check:
            return BTNS_CHECK;
        case ButtonStyle::Group:
            return BTNS_CHECKGROUP;
        case ButtonStyle::DropDown:
            return BTNS_DROPDOWN;
        case ButtonStyle::Separator:
        case ButtonStyle::Placeholder:
            return BTNS_SEP;
        case ButtonStyle::Normal:
            break;
    }
    return BTNS_BUTTON;
}

}  // namespace

bool MainToolbar::Create(HWND parent, const MainLook& look) {
    if (!Toolbar1.Create(parent, kIdToolbar1, *this)) {
        return false;
    }
    Toolbar1.SetDescriber([this](int) {
        AccessibleInfo info;
        info.name = Widen(m_workplace.Text(text::kToolbarName));
        return info;
    });
    ApplyLook(look);
    std::vector<ToolButton> buttons;
    const int pictures = ImageList_GetImageCount(look.toolbarPictures.Get());
    for (const ToolbarButton& info : BuildToolbar(pictures, kToolbarSpec, kToolbarIds, 0)) {
        ToolButton button;
        button.style = StyleOf(info.style);
        button.picture = info.style == ButtonStyle::Placeholder ? info.width : info.picture;
        if (info.textNumber != 0) {
            button.id = static_cast<int>(CommandOfButton(info.name));
            button.text = Widen(m_workplace.Text(info.textNumber));
        }
        buttons.push_back(std::move(button));
    }
    Toolbar1.AddButtons(buttons);
    OnCommandsChanged();
    return true;
}

void MainToolbar::ApplyLook(const MainLook& look) {
    Toolbar1.SetImages(look.toolbarPictures.Get(), look.disabledToolbarPictures.Get());
}

void MainToolbar::ApplyLanguage() {
    for (const CommandInfo& info : AllCommands()) {
        if (!info.toolbarName.empty()) {
            Toolbar1.SetText(static_cast<int>(info.command),
                             Widen(m_workplace.Text(info.textNumber)));
        }
    }
}

void MainToolbar::OnCommandsChanged() {
    for (const CommandInfo& info : AllCommands()) {
        if (!info.toolbarName.empty()) {
            Toolbar1.SetEnabled(static_cast<int>(info.command), m_states.IsEnabled(info.command));
            Toolbar1.SetPressed(static_cast<int>(info.command), m_states.IsChecked(info.command));
        }
    }
}

void MainToolbar::OnToolbarButton(int id) {
    m_actions.ExecuteButton(static_cast<Command>(id));
}

void MainToolbar::OnToolbarDropDown(int id, const RECT& button) {
    m_actions.ShowDropDown(static_cast<Command>(id), button);
}

}  // namespace tamarind
