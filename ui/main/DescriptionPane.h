#pragma once

#include "model/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/EditBox.h"
#include "ui/toolkit/Toolbar.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The description of the current key, with a small toolbar at its side.
class DescriptionPane final : public Window, private ToolbarListener {
public:
    DescriptionPane(const EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);

    HWND Box() const { return txtDescriptionBox.Handle(); }
    void ShowDescription();
    // Brings the toolbar's states up to date.
    void Refresh();

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnToolbarButton(int id) override;
    void OnToolbarDropDown(int, const RECT&) override {}
    void Layout();

    const EditorSession& m_session;
    MainWindowActions& m_actions;
    EditBox txtDescriptionBox;
    Toolbar Toolbar2;
};

}  // namespace tamarind
