#pragma once

#include "model/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/VirtualList.h"

namespace tamarind {

// The visible key list: the rows of the session's list, each a line of the settings file.
class KeyListView final : private VirtualListSource {
public:
    KeyListView(EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent);
    void ApplyLook(const MainLook& look);
    HWND Handle() const { return ListView1.Handle(); }

    void Fill();
    // Selects the session's current key, if another row is selected.
    void ShowCurrentKey();

private:
    std::wstring RowText(int row) const override;
    RowLook LookOfRow(int row) const override;
    void OnRowSelected(int row) override;
    void OnListMenu(POINT at) override;
    std::optional<KeyRecord> RecordOf(int row) const;

    EditorSession& m_session;
    MainWindowActions& m_actions;
    COLORREF m_activeColor = 0;
    VirtualList ListView1;
};

}  // namespace tamarind
