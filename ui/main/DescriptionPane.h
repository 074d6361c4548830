#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/EditBox.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Toolbar.h"
#include "ui/toolkit/Window.h"

namespace tamarind {

// The description of the current key. While changed descriptions wait to be saved, a small toolbar
// in its corner offers that.
class DescriptionPane final : public Window, private ToolbarListener, private EditBoxListener {
public:
    DescriptionPane(EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);

    // Shows the texts of the present language.
    void ApplyLanguage();

    HWND Box() const { return txtDescriptionBox.Handle(); }
    void ShowDescription();
    // Selects a part of the text, in UTF-16 units.
    void ShowHit(std::size_t start, std::size_t length) { txtDescriptionBox.Select(start, length); }
    // Brings the toolbar's states up to date.
    void Refresh();

private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnToolbarButton(int id) override;
    void OnToolbarDropDown(int, const RECT&) override {}
    void OnTextChanged() override;
    void Layout();
    void PlaceDescriptionToolbar(Twips height);

    EditorSession& m_session;
    bool m_isLoading = false;
    int m_dpi = 0;
    MainWindowActions& m_actions;
    EditBox txtDescriptionBox;
    Toolbar Toolbar2;
};

}  // namespace tamarind
