#pragma once

#include "model/session/CommandStates.h"
#include "model/session/Workplace.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Toolbar.h"

namespace tamarind {

// The main toolbar. Its text form (ToolbarSpec) lists the buttons, and each carries out the command
// of its name.
class MainToolbar final : private ToolbarListener, private WorkplaceListener {
public:
    // All arguments are kept by reference and must outlive the toolbar.
    MainToolbar(Workplace& workplace, const CommandStates& states, MainWindowActions& actions)
        : m_workplace(workplace), m_states(states), m_actions(actions) {
        m_workplace.Watchers().Add(*this);
    }
    ~MainToolbar() override { m_workplace.Watchers().Remove(*this); }
    MainToolbar(const MainToolbar&) = delete;
    MainToolbar& operator=(const MainToolbar&) = delete;

    // Makes the toolbar with its buttons, hidden. False if Windows cannot create it.
    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    // Shows the tooltips in the present language.
    void ApplyLanguage();
    void Show(bool isVisible) { Toolbar1.Show(isVisible); }
    void SetBounds(const RECT& bounds) { Toolbar1.SetBounds(bounds); }
    // The height in pixels that the buttons need.
    int IdealHeight() const { return static_cast<int>(Toolbar1.IdealSize().cy); }

private:
    void OnCommandsChanged() override;
    void OnToolbarButton(int id) override;
    void OnToolbarDropDown(int id, const RECT& button) override;

    Workplace& m_workplace;
    const CommandStates& m_states;
    MainWindowActions& m_actions;
    Toolbar Toolbar1;
};

}  // namespace tamarind
