#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Toolbar.h"

namespace tamarind {

// The main toolbar: its buttons are those that its text form lists, and each does what the
// command of its name does.
class MainToolbar final : private ToolbarListener {
public:
    MainToolbar(const EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    // Shows the texts of the present language.
    void ApplyLanguage();
    // Brings the buttons' states up to date.
    void Refresh();

    void Show(bool isVisible) { Toolbar1.Show(isVisible); }
    void SetBounds(const RECT& bounds) { Toolbar1.SetBounds(bounds); }
    int IdealHeight() const { return static_cast<int>(Toolbar1.IdealSize().cy); }

private:
    void OnToolbarButton(int id) override;
    void OnToolbarDropDown(int id, const RECT& button) override;

    const EditorSession& m_session;
    MainWindowActions& m_actions;
    Toolbar Toolbar1;
};

}  // namespace tamarind
